// What the process gets from its system and its user's shell. All texts are UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quill1xml::cli {

/// Readies the process for the command line: its streams carry UTF-8, nothing else. What was changed of the terminal
/// is put back in the end.
class Process {
public:
    /// Takes what main() got.
    Process(int argc, char** argv);

    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Without the name of the program.
    const std::vector<std::string>& arguments() const { return arguments_; }

private:
    struct System;

    std::vector<std::string> arguments_;
    std::unique_ptr<System> system_;
};

/// A variable of the environment; nothing where it is not set.
std::optional<std::string> environmentVariable(const std::string& name);

}  // namespace quill1xml::cli
