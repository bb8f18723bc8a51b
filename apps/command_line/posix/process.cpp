#include "command_line/process.hpp"

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace quill1xml::cli {

struct Process::System {};

Process::Process(int argc, char** argv) : arguments_(argv + 1, argv + argc) {
    // Writing beyond a closed pipe or a limit fails where it happens: a job that nobody listens to goes on to its end.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    // Together with C's streams, standard input would hide that reading fails.
    std::ios::sync_with_stdio(false);
}

Process::~Process() = default;

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

}  // namespace quill1xml::cli
