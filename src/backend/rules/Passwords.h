// Password hashes and random tokens.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace Backend {

enum class PasswordHashing {
    Secure,       // Argon2id with the settings for interactive logons
    QuickForTests // the same with the least cost
};

// A hash takes tens of milliseconds and of megabytes, so only a few are computed at
// once; the others wait, and beyond a number of waiting ones are refused.
class Passwords {
public:
    explicit Passwords(PasswordHashing hashing);
    ~Passwords();

    // Raises Refusal (Busy) when too many wait.
    std::string Hash(const std::string& password);
    bool Matches(const std::string& hash, const std::string& password);
    // Takes the time of a comparison that fails.
    void MatchNothing(const std::string& password);

private:
    struct State;
    std::unique_ptr<State> FState;
};

// 128 random bits, as 16 bytes.
std::string NewToken();
// What is kept of a token.
std::string TokenHash(std::string_view token);
// SHA-256 in lower-case hexadecimal digits.
std::string ContentHash(std::string_view bytes);

} // namespace Backend
