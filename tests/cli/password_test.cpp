// Where passwords come from, and that they do not show.
#include "command_line/password.hpp"

#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace quill1xml::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class PasswordTest : public ::testing::Test {
protected:
    void SetUp() override { unsetenv("QUILL1XML_PASSWORD"); }
};

TEST_F(PasswordTest, ComesFromTheFileElseFromTheEnvironment) {
    const testing::TempFolder folder;
    const auto file = [&folder](const char* bytes) {
        folder.create(u"secret", bytes);
        return (folder.path() / "secret").string();
    };
    setenv("QUILL1XML_PASSWORD", "from outside", 1);
    EXPECT_EQ(readPassword("", "u"), "from outside");
    EXPECT_EQ(readPassword(file("p&w ü\nsecond line\n"), "u"), "p&w ü");
    EXPECT_EQ(readPassword(file("no end"), "u"), "no end");
    EXPECT_EQ(readPassword(file("from Windows\r\n"), "u"), "from Windows");
    EXPECT_EQ(readPassword(file("\n"), "u"), "");
    EXPECT_THROW(readPassword(file(""), "u"), std::runtime_error);
    EXPECT_THROW(readPassword(folder.path() / "missing", "u"), std::runtime_error);
}

/// A process that reads a password on a terminal of its own, or on none.
class Asking {
public:
    explicit Asking(bool onTerminal) {
        EXPECT_EQ(openpty(&user_, &terminal_, nullptr, nullptr, nullptr), 0);
        int results[2];
        EXPECT_EQ(pipe(results), 0);
        process_ = fork();
        if (process_ == 0) {
            setsid();
            if (onTerminal) ioctl(terminal_, TIOCSCTTY, 0);
            std::string result;
            try {
                result = readPassword("", "Zoë");
            } catch (const std::runtime_error& error) {
                result = error.what();
            }
            _exit(write(results[1], result.data(), result.size()) < 0 ? 1 : 0);
        }
        close(results[1]);
        results_ = results[0];
    }

    ~Asking() {
        for (const int descriptor : {user_, terminal_, results_}) close(descriptor);
    }

    void awaitPrompt() {
        while (screen_.find(": ") == std::string::npos) screen_ += readSome(user_);
    }

    void type(std::string_view keys) const {
        EXPECT_EQ(write(user_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    /// Presses Ctrl-C until the process ends: right after the prompt, before it waits for keys, one would go unheard.
    void interrupt() const {
        pollfd results{results_, POLLIN, 0};
        do type("\x03");
        while (poll(&results, 1, 100) == 0);
    }

    /// What the process read or complained of, once it has ended.
    std::string result() {
        std::string all;
        for (std::string part; !(part = readSome(results_)).empty();) all += part;
        waitpid(process_, &status_, 0);
        return all;
    }

    int status() const { return status_; }

    /// All that was shown, once the process has ended.
    std::string screen() {
        fcntl(user_, F_SETFL, O_NONBLOCK);
        return screen_ += readSome(user_);
    }

    bool echoes() const {
        termios settings{};
        tcgetattr(terminal_, &settings);
        return (settings.c_lflag & ECHO) != 0;
    }

private:
    static std::string readSome(int descriptor) {
        char part[256];
        const ssize_t count = read(descriptor, part, sizeof part);
        return count > 0 ? std::string(part, static_cast<std::size_t>(count)) : std::string();
    }

    int user_ = -1;
    int terminal_ = -1;
    int results_ = -1;
    pid_t process_ = -1;
    int status_ = -1;
    std::string screen_;
};

TEST_F(PasswordTest, IsAskedForOnTheTerminalUnseen) {
    Asking asking(true);
    asking.awaitPrompt();
    EXPECT_FALSE(asking.echoes());
    asking.type(
        "gehXX\x7f\x7f"
        "eim\n");
    EXPECT_EQ(asking.result(), "geheim");
    EXPECT_EQ(asking.screen(), "Password of Zoë: \r\n");
    EXPECT_TRUE(asking.echoes());
}

TEST_F(PasswordTest, LeavesTheTerminalAsItWasWhenInterrupted) {
    Asking asking(true);
    asking.awaitPrompt();
    asking.type("geh");
    asking.interrupt();
    EXPECT_EQ(asking.result(), "");
    EXPECT_TRUE(WIFSIGNALED(asking.status()));
    EXPECT_EQ(WTERMSIG(asking.status()), SIGINT);
    EXPECT_THAT(asking.screen(), Not(HasSubstr("geh")));
    EXPECT_TRUE(asking.echoes());
}

TEST_F(PasswordTest, IsMissedWithoutATerminalOrALine) {
    Asking nowhere(false);
    EXPECT_THAT(nowhere.result(), HasSubstr("no password: there is no terminal to ask on; name a file with"));
    Asking ended(true);
    ended.awaitPrompt();
    ended.type("\x04");
    EXPECT_THAT(ended.result(), HasSubstr("no password: nothing was typed;"));
}

}  // namespace
}  // namespace quill1xml::cli
