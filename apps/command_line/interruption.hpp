// A process that is asked to end while something is to be tidied up.
#pragma once

namespace quill1xml::cli {

/// While it is there, being asked to end (by Ctrl-C, by the system) is only noted; a second time ends the process as
/// ever. In the end the process ends in the way it was asked to, where its system knows such ways. One at a time.
class Interruption {
public:
    static constexpr int status = 130;  ///< what shells know of a program that Ctrl-C ended

    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool isAsked() const noexcept;
};

}  // namespace quill1xml::cli
