// The command line of the sandbox.
#pragma once

#include "server.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

struct Options {
    Settings settings;
    std::string portFile;  ///< where the port is written once the server listens; empty for nowhere
};

/// Reads the command line. Nothing when the program is to end with the exit status, the reason having been printed.
std::optional<Options> readOptions(int argc, char** argv, std::string_view version, int& exitStatus);

}  // namespace quill1xml::sandbox
