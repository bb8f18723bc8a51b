// Sending product images.
#pragma once

#include "command_line/exchanges.hpp"

#include <ostream>
#include <string>

namespace quill1xml::cli {

/// All texts are UTF-8.
struct ImageOptions {
    std::string folder{};  ///< of the files, without a separator at its end
    std::string spec{};    ///< a file name or a pattern of "*" and "?"
    std::string url{};
    Long store = 0;
    std::string user{};
    std::string password{};
    std::string uploadFolder{};
    bool thumbnail = false;
    bool remove = false;  ///< delete the images of these names from the store instead of sending them
};

/// Writes how many files match, sends them and writes that they were sent to out, or the error to err. Returns the exit
/// status: 0, or 1 when no file matches or after an error, which leaves what was sent before it in the store.
int sendImages(Exchanges& exchanges, const ImageOptions& options, std::ostream& out, std::ostream& err);

}  // namespace quill1xml::cli
