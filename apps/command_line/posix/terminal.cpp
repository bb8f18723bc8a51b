#include "command_line/terminal.hpp"

#include <array>
#include <cerrno>
#include <stdexcept>

#include <bsd/readpassphrase.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quill1xml::cli {

bool outputIsTerminal() { return isatty(STDOUT_FILENO) != 0; }
bool outputIsPipe() {
    struct stat output {};
    return fstat(STDOUT_FILENO, &output) == 0 && (S_ISFIFO(output.st_mode) || S_ISSOCK(output.st_mode));
}

bool errorOutputIsTerminal() { return isatty(STDERR_FILENO) != 0; }

std::size_t terminalWidth() {
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

std::string askUnseen(const std::string& prompt) {
    // A terminal hands out lines of at most 4096 bytes.
    std::array<char, 4097> line{};
    if (readpassphrase(prompt.c_str(), line.data(), line.size(), RPP_ECHO_OFF | RPP_REQUIRE_TTY) == nullptr) {
        if (errno == ENOTTY) throw std::runtime_error("there is no terminal to ask on");
        throw std::runtime_error(errno == EINTR ? "interrupted" : "the terminal cannot be read");
    }
    // An empty line and the end of input look the same.
    if (line.front() == '\0') throw std::runtime_error("nothing was typed");
    return line.data();
}

}  // namespace quill1xml::cli
