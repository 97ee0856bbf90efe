#include "apps/admin/Password.h"

#include <array>
#include <cerrno>
#include <iostream>

#include <signal.h>
#include <termios.h>
#include <unistd.h>

namespace {

// While it lives the terminal shows nothing that is typed, and a signal that would end the
// program ends the reading instead, so that the echo comes back.
class SilentTerminal {
public:
    SilentTerminal() {
        struct sigaction interrupt {};
        interrupt.sa_handler = [](int) {};
        for (std::size_t i = 0; i < Signals.size(); ++i)
            sigaction(Signals[i], &interrupt, &FActions[i]);
        if (tcgetattr(STDIN_FILENO, &FSettings) != 0) return;
        termios silent = FSettings;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        FSilent = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
    }
    ~SilentTerminal() {
        if (FSilent) tcsetattr(STDIN_FILENO, TCSAFLUSH, &FSettings);
        for (std::size_t i = 0; i < Signals.size(); ++i)
            sigaction(Signals[i], &FActions[i], nullptr);
        std::cerr << '\n';
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

    bool Silent() const { return FSilent; }

private:
    static constexpr std::array Signals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
    std::array<struct sigaction, Signals.size()> FActions{};
    termios FSettings{};
    bool FSilent = false;
};

std::string ReadLine() {
    std::string line;
    for (char c = 0;;) {
        const auto count = read(STDIN_FILENO, &c, 1);
        if (count < 0) throw PasswordError(errno == EINTR ? "Interrupted." : "The password cannot be read.");
        if (count == 0 || c == '\n') return line;
        line += c;
    }
}

std::string AskOnce(const std::string& question) {
    std::cerr << question << std::flush;
    const SilentTerminal terminal;
    if (!terminal.Silent()) throw PasswordError("The terminal's echo cannot be switched off.");
    return ReadLine();
}

} // namespace

std::string AskPassword(const std::string& userName) {
    std::string password;
    if (isatty(STDIN_FILENO)) {
        password = AskOnce("Password of " + userName + ": ");
        if (AskOnce("The same again: ") != password) throw PasswordError("The two passwords differ.");
    } else {
        password = ReadLine();
        if (password.ends_with('\r')) password.pop_back();
    }
    if (password.empty()) throw PasswordError("A password cannot be empty.");
    return password;
}
