// A job in JSON Lines, played through one Store.
//
// A line is an object with one member: the method's name, and its arguments by parameter name as an object. Blank lines
// are passed over.
//
//     {"AddTax":{"strTaxCode":"VAT","dblRate":15}}
//     {"Send":{}}
#pragma once

#include "command_line/exchanges.hpp"

#include <istream>
#include <ostream>

namespace quill1xml::cli {

struct Streams {
    std::istream& in;
    std::ostream& out;  ///< results, one JSON object a line
    std::ostream& err;  ///< warnings and the error that ends the job; the progress goes there too
};

struct JobOptions {
    bool strict = false;   ///< a value left out is an error
    bool verbose = false;  ///< every value left out is told, not only the first ones
};

/// Plays the job to its end or to its first error; messages that cannot be written do not end it. Returns the exit
/// status: 0, or 1 after an error.
int playJob(Exchanges& exchanges, const Streams& streams, const JobOptions& options = {});

}  // namespace quill1xml::cli
