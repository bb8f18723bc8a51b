#include "command_line/progress.hpp"

#include "command_line/display_width.hpp"
#include "command_line/harmless_text.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quill1xml::cli {
namespace {

/// Back to the start of the line, and clears it.
constexpr const char* clearLine = "\r\x1b[K";

}  // namespace

void Progress::start(std::size_t packets) {
    finish();
    total_ = packets;
    done_ = 0;
}

void Progress::packet(Text fileName, Long importNumber) {
    ++done_;
    const std::size_t total = std::max(total_, done_);
    const std::string count = std::to_string(done_) + "/" + std::to_string(total);
    const std::string accepted = excerpt(fileName) + ": import " + std::to_string(importNumber);
    if (!terminal_) {
        out_ << "[" << count << "] " << accepted << std::endl;
        return;
    }
    constexpr std::size_t width = 30;
    const std::size_t filled = width * done_ / total;
    bar_ = "[" + std::string(filled, '#') + std::string(width - filled, '.') + "] " + count + " " + accepted;
    waiting_ = false;
    out_ << clearLine << bar_ << std::flush;
}

void Progress::waiting(const ports::Waiting& wait) {
    constexpr std::chrono::seconds usual{5};
    if (!terminal_) return;
    const bool waits = wait.silent >= usual;
    if (!waits && !waiting_) return;
    erase();
    waiting_ = waits;
    if (!waits) {
        out_ << bar_ << std::flush;
        return;
    }
    // The whole must fit into a line: what wraps is not cleared.
    constexpr std::size_t widest = 40;
    if (done_ < total_) out_ << "[" << done_ << "/" << total_ << "] ";
    out_ << "waiting " << wait.silent.count() << " s of " << wait.limit.count() << " for "
         << toUtf8(fitted(harmless(wait.host), widest)) << std::flush;
}

void Progress::print(const std::string& line) {
    erase();
    out_ << line << std::endl << bar_ << std::flush;
}

void Progress::finish() {
    waiting({});
    if (!std::exchange(bar_, {}).empty()) out_ << std::endl;
}

void Progress::erase() {
    if (waiting_ || !bar_.empty()) out_ << clearLine;
    waiting_ = false;
}

}  // namespace quill1xml::cli
