// Asks for a new password.
#pragma once

#include <stdexcept>
#include <string>

class PasswordError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// At a terminal, asks twice without echo; otherwise takes the first line of standard
// input. Raises PasswordError when there is none, when the two differ, or when the
// question is interrupted; the terminal's echo is on again then, too.
std::string AskPassword(const std::string& userName);
