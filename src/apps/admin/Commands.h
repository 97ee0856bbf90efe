// What the commands share.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

class Arguments;

constexpr int ExitDone = 0;
constexpr int ExitFailed = 1; // nothing was changed
constexpr int ExitUsage = 2;
constexpr int ExitPartly = 3; // an import that has left records out

// A command that cannot be done; the message is a sentence for the user.
class CommandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The path that --database gives, else the embedded server's. Raises CommandError when
// there is no such file.
std::string ExistingDatabase(const Arguments& arguments);

// Each takes what stands behind the command and gives the exit status.
int RunCreate(const std::vector<std::string>& texts);
int RunAddUser(const std::vector<std::string>& texts);
int RunGrant(const std::vector<std::string>& texts);
