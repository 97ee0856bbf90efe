// What the server says when it does not do as asked: the name of an exception class,
// by which callers tell refusals apart, and one sentence that names the object.
#pragma once

#include <stdexcept>
#include <string>

namespace Backend {

class Refusal : public std::runtime_error {
public:
    enum class Reason { NotLoggedOn, Denied, NotFound, Invalid, Conflict, Busy };

    // what() is "<exceptionClass>: <sentence>".
    Refusal(Reason reason, const std::string& exceptionClass, const std::string& sentence)
        : std::runtime_error(exceptionClass + ": " + sentence)
        , FReason(reason)
        , FSentence(sentence) {}

    Reason Why() const { return FReason; }
    const std::string& Sentence() const { return FSentence; }

private:
    Reason FReason;
    std::string FSentence;
};

// A value that the rules do not allow.
class RuleViolation : public Refusal {
public:
    explicit RuleViolation(const std::string& sentence)
        : Refusal(Reason::Invalid, "InvalidValueException", sentence) {}

protected:
    RuleViolation(const std::string& exceptionClass, const std::string& sentence)
        : Refusal(Reason::Invalid, exceptionClass, sentence) {}
};

// A description that the server does not take. Clients find the sentences by their
// exact wording, next to the class name that every trouble of the server carries.
class MarkupViolation : public RuleViolation {
public:
    explicit MarkupViolation(const std::string& sentence)
        : RuleViolation("RemoteServerException", sentence) {}
};

} // namespace Backend
