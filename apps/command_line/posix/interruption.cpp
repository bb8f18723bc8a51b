#include "command_line/interruption.hpp"

#include <array>
#include <csignal>

namespace quill1xml::cli {
namespace {

volatile std::sig_atomic_t asked = 0;

void note(int signal) { asked = signal; }

struct Signal {
    int number;
    struct sigaction usual {};
};
std::array<Signal, 3> signals{{{SIGINT}, {SIGTERM}, {SIGHUP}}};

}  // namespace

Interruption::Interruption() {
    asked = 0;
    for (Signal& each : signals) {
        struct sigaction noting {};
        noting.sa_handler = note;
        noting.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        sigaction(each.number, &noting, &each.usual);
        // Who starts a program in the background may want it to go on.
        if (each.usual.sa_handler == SIG_IGN) sigaction(each.number, &each.usual, nullptr);
    }
}

Interruption::~Interruption() {
    for (const Signal& each : signals) sigaction(each.number, &each.usual, nullptr);
    if (asked != 0) std::raise(asked);
}

bool Interruption::isAsked() const noexcept { return asked != 0; }

}  // namespace quill1xml::cli
