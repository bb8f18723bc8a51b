// A job in JSON Lines, played through one Store.
//
// A line is an object with one member: the method's name, and its arguments by parameter name as an object. Blank lines
// are passed over.
//
//     {"AddTax":{"strTaxCode":"VAT","dblRate":15}}
//     {"Send":{}}
#pragma once

#include "command_line/exchanges.hpp"

#include <chrono>
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <thread>

namespace quill1xml::cli {

struct Streams {
    std::istream& in;
    std::ostream& out;  ///< results, one JSON object a line
    std::ostream& err;  ///< warnings and the error that ends the job; the progress goes there too
};

struct JobOptions {
    bool strict = false;   ///< a value left out is an error
    bool verbose = false;  ///< every value left out is told, not only the first ones

    std::string journal{};  ///< the file that keeps what became of each packet; empty for none
    bool discard = false;   ///< a job that the journal keeps is given up
    int retries = 0;        ///< of a sending whose transport fails, after 1, 2, 4 ... s; wants a journal

    /// Waits between two tries.
    std::function<void(std::chrono::seconds)> wait = [](auto time) { std::this_thread::sleep_for(time); };
};

/// Plays the job to its end or to its first error; messages that cannot be written do not end it. Returns the exit
/// status: 0, or 1 after an error.
int playJob(Exchanges& exchanges, const Streams& streams, const JobOptions& options = {});

}  // namespace quill1xml::cli
