#include "command_line/progress.hpp"

#include "command_line/harmless_text.hpp"

#include <algorithm>
#include <string>

namespace quill1xml::cli {

void Progress::start(std::size_t packets) {
    finish();
    total_ = packets;
    done_ = 0;
}

void Progress::packet(Text fileName, Long importNumber) {
    ++done_;
    const std::size_t total = std::max(total_, done_);
    if (!terminal_) {
        out_ << "[" << done_ << "/" << total << "] " << excerpt(fileName) << ": import " << importNumber << std::endl;
        return;
    }
    constexpr std::size_t width = 30;
    const std::size_t filled = width * done_ / total;
    // Back to the start of the line and clear it.
    out_ << "\r\x1b[K[" << std::string(filled, '#') << std::string(width - filled, '.') << "] " << done_ << "/" << total
         << " " << excerpt(fileName) << ": import " << importNumber << std::flush;
    drawn_ = true;
}

void Progress::finish() {
    if (drawn_) out_ << std::endl;
    drawn_ = false;
}

}  // namespace quill1xml::cli
