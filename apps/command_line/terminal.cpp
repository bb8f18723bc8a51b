#include "command_line/terminal.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

namespace quill1xml::cli {
namespace {

volatile std::sig_atomic_t caught = 0;

/// Holds back the signals that end a program: it must not end while the terminal shows nothing of what is typed.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : signals) sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &former_);
        caught = 0;
        struct sigaction action {};
        action.sa_handler = [](int signal) { caught = signal; };
        for (std::size_t i = 0; i < signals.size(); ++i) sigaction(signals[i], &action, &formerActions_[i]);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() {
        for (std::size_t i = 0; i < signals.size(); ++i) sigaction(signals[i], &formerActions_[i], nullptr);
        sigprocmask(SIG_SETMASK, &former_, nullptr);
    }

    /// Waits for input. Throws when a signal comes first.
    void awaitInput(int descriptor) const {
        for (;;) {
            fd_set inputs;
            FD_ZERO(&inputs);
            FD_SET(descriptor, &inputs);
            if (pselect(descriptor + 1, &inputs, nullptr, nullptr, nullptr, &former_) != -1) return;
            if (caught != 0) throw std::runtime_error("interrupted");
            if (errno != EINTR) throw std::runtime_error("the terminal cannot be read");
        }
    }

private:
    static constexpr std::array signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    sigset_t former_{};
    std::array<struct sigaction, signals.size()> formerActions_{};
};

/// The terminal of the process, which echoes nothing but the end of a line.
class UnseenInput {
public:
    UnseenInput() : descriptor_(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (descriptor_ == -1 || tcgetattr(descriptor_, &former_) == -1) {
            close();
            throw std::runtime_error("there is no terminal to ask on");
        }
        termios unseen = former_;
        unseen.c_lflag = (unseen.c_lflag & ~static_cast<tcflag_t>(ECHO)) | ECHONL | ICANON;
        tcsetattr(descriptor_, TCSAFLUSH, &unseen);
    }
    UnseenInput(const UnseenInput&) = delete;
    UnseenInput& operator=(const UnseenInput&) = delete;
    ~UnseenInput() {
        tcsetattr(descriptor_, TCSAFLUSH, &former_);
        close();
    }

    void write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t count = ::write(descriptor_, text.data(), text.size());
            if (count <= 0) throw std::runtime_error("the terminal cannot be written to");
            text.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    /// A line without its end; fails at the end of input.
    std::string readLine(const HeldSignals& signals) const {
        std::string line;
        std::array<char, 256> part{};
        while (line.empty() || line.back() != '\n') {
            signals.awaitInput(descriptor_);
            const ssize_t count = read(descriptor_, part.data(), part.size());
            if (count <= 0) throw std::runtime_error("nothing was typed");
            line.append(part.data(), static_cast<std::size_t>(count));
        }
        line.pop_back();
        return line;
    }

private:
    void close() const {
        if (descriptor_ != -1) ::close(descriptor_);
    }

    int descriptor_;
    termios former_{};
};

}  // namespace

bool outputIsTerminal() { return isatty(STDOUT_FILENO) != 0; }
bool errorOutputIsTerminal() { return isatty(STDERR_FILENO) != 0; }

std::size_t terminalWidth() {
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

std::string askUnseen(const std::string& prompt) {
    try {
        const HeldSignals signals;
        const UnseenInput input;
        input.write(prompt);
        return input.readLine(signals);
    } catch (const std::runtime_error&) {
        // The terminal is as it was: now the signal may do what it does.
        if (caught != 0) std::raise(caught);
        throw;
    }
}

}  // namespace quill1xml::cli
