// An error as one line for people.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <string>

namespace quill1xml::cli {

/// "error 5 (Login): Server: Wrong password." in UTF-8.
inline std::string errorText(const Error& error) {
    return "error " + std::to_string(error.number()) + " (" + toUtf8(error.source()) + "): " + error.what();
}

}  // namespace quill1xml::cli
