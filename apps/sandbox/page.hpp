// The store's front page: what has arrived, for a person to read.
#pragma once

#include "document.hpp"

#include <string>

namespace quill1xml::sandbox {

/// What the page shows, in the forms that Storage gives.
struct Overview {
    std::string url;
    Json imports;
    Json kinds;
    Json customers;
    Json orders;
    Json quotations;
    Json images;
};

/// A complete HTML document in UTF-8 that needs nothing else: no scripts, no style sheets, no fonts.
std::string page(const Overview& overview);

}  // namespace quill1xml::sandbox
