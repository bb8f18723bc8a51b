// Progress of exchanges, for people: a bar on a terminal, a line per packet elsewhere.
#pragma once

#include "quill1xml/http.hpp"
#include "quill1xml/types.hpp"

#include <cstddef>
#include <ostream>
#include <string>

namespace quill1xml::cli {

class Progress {
public:
    /// Writes to the stream; `terminal` tells whether it is one, and can redraw its last line.
    Progress(std::ostream& out, bool terminal) : out_(out), terminal_(terminal) {}

    /// Begins a sending of that many packets.
    void start(std::size_t packets);

    /// One more packet was accepted.
    void packet(Text fileName, Long importNumber);

    /// A server is silent; shown on a terminal once it takes long, and until it is silent no more.
    void waiting(const ports::Waiting& wait);

    /// Writes a line, above the bar.
    void print(const std::string& line);

    /// Ends the line of the bar, so that what follows starts on a line of its own.
    void finish();

private:
    void erase();

    std::ostream& out_;
    bool terminal_;
    std::string bar_;       ///< as it is drawn; empty when there is none
    bool waiting_ = false;  ///< what is drawn is the waiting
    std::size_t total_ = 0;
    std::size_t done_ = 0;
};

}  // namespace quill1xml::cli
