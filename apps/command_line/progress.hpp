// Progress of sending, for people: a bar on a terminal, a line per packet elsewhere.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <ostream>

namespace quill1xml::cli {

class Progress {
public:
    /// Writes to the stream; `terminal` tells whether it is one, and can redraw its last line.
    Progress(std::ostream& out, bool terminal) : out_(out), terminal_(terminal) {}

    /// Begins a sending of that many packets.
    void start(std::size_t packets);

    /// One more packet was accepted.
    void packet(Text fileName, Long importNumber);

    /// Ends the line of the bar, so that what follows starts on a line of its own.
    void finish();

private:
    std::ostream& out_;
    bool terminal_;
    bool drawn_ = false;
    std::size_t total_ = 0;
    std::size_t done_ = 0;
};

}  // namespace quill1xml::cli
