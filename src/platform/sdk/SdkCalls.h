// The one point that every operation of every SDK object passes, by the name that
// callers know it by ("IRequirement.save"), and every round trip to the server.
// Whoever wants to know or to interfere (a call trace, a test, a benchmark)
// registers an observer; with none registered an operation pays for one branch.
#pragma once

#include <cstdint>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Sdk {

// Told on the thread that uses the SDK. The lease keeper's renewals belong to no
// operation and are not told.
class TCallObserver {
public:
    TCallObserver() = default;
    TCallObserver(const TCallObserver&) = delete;
    TCallObserver& operator=(const TCallObserver&) = delete;
    virtual ~TCallObserver() = default;

    // Before the operation does anything. What this raises is the operation's failure.
    virtual void OperationStarts(std::string_view /*operation*/) {}
    // Also when the operation fails, but not when OperationStarts failed. Raises nothing.
    virtual void OperationEnds(std::string_view /*operation*/, bool /*failed*/) {}
    // A request is about to leave, or to leave again after a broken connection.
    virtual void RoundTrip(std::string_view /*request*/) {}
};

// The observer stays the caller's and is removed before it ends.
void AddCallObserver(TCallObserver& observer);
void RemoveCallObserver(TCallObserver& observer);

// Empty while nobody observes: then a call costs the test of this pointer alone.
extern const std::vector<TCallObserver*>* ActiveCallObservers;

void TellRoundTrip(std::string_view request);

// Stands at the start of each operation and lives as long as it runs.
class TCall {
public:
    // The name must outlive the call: a literal.
    explicit TCall(std::string_view operation) {
        if (ActiveCallObservers) Start(operation);
    }
    TCall(const TCall&) = delete;
    TCall& operator=(const TCall&) = delete;
    ~TCall() {
        if (!FOperation.empty()) End();
    }

private:
    void Start(std::string_view operation);
    void End();

    std::string_view FOperation;
    int FExceptions = 0;
};

// Keeps what was called, in order, and fails operations on demand.
class TCallRecorder : public TCallObserver {
public:
    TCallRecorder();
    ~TCallRecorder() override;

    // From now on the operation raises EOleSysError with this message, `times` times.
    void FailOperation(const std::string& operation, const std::string& message, int times = 1);

    const std::vector<std::string>& Operations() const { return FOperations; }
    int RoundTrips() const { return static_cast<int>(FRoundTrips.size()); }
    const std::vector<std::string>& Requests() const { return FRoundTrips; }
    std::int64_t CallsOf(const std::string& operation) const;
    void Clear();

    void OperationStarts(std::string_view operation) override;
    void RoundTrip(std::string_view request) override;

private:
    struct TFailure {
        std::string Message;
        int Times = 0;
    };

    std::vector<std::string> FOperations;
    std::vector<std::string> FRoundTrips;
    std::map<std::string, TFailure, std::less<>> FFailures;
};

// Writes one line for each operation and each round trip, indented by depth and
// with the time spent. Values never reach the file: it goes to a support desk.
class TCallTrace : public TCallObserver {
public:
    // Appends to the file. A file that cannot be opened leaves the trace silent.
    explicit TCallTrace(const std::string& fileName);
    ~TCallTrace() override;

    void OperationStarts(std::string_view operation) override;
    void OperationEnds(std::string_view operation, bool failed) override;
    void RoundTrip(std::string_view request) override;

private:
    void Line(std::string_view mark, std::string_view name, std::string_view rest);

    std::ofstream FFile;
    std::vector<std::int64_t> FStarts;
};

} // namespace Sdk
