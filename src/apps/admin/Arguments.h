// The command line of a program whose commands have options with and without values.
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

// What was typed is not understood; the message is a sentence without a full stop.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Arguments {
public:
    // Texts: what stands behind the command. Raises UsageError on an option that is
    // neither in `valued` nor in `flags`, that stands twice, or that lacks its value, and
    // when there are not as many other words as `words`.
    Arguments(const std::vector<std::string>& texts, const std::set<std::string>& valued,
              const std::set<std::string>& flags, std::size_t words);

    const std::string& Word(std::size_t position) const { return FWords.at(position); }
    bool Has(const std::string& option) const { return FOptions.contains(option); }
    // The fallback when the option was not given.
    std::string Value(const std::string& option, const std::string& fallback = {}) const;
    // Raises UsageError when the option was not given.
    std::string Required(const std::string& option) const;

private:
    std::vector<std::string> FWords;
    std::map<std::string, std::string> FOptions;
};
