#include "platform/sdk/SdkCalls.h"

#include "contracts/Exceptions.h"
#include "platform/sdk/Failures.h"

#include <algorithm>
#include <chrono>
#include <exception>

namespace Sdk {

const std::vector<TCallObserver*>* ActiveCallObservers = nullptr;

namespace {

std::vector<TCallObserver*>& Observers() {
    static std::vector<TCallObserver*> observers;
    return observers;
}

std::int64_t MicrosecondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

} // namespace

void AddCallObserver(TCallObserver& observer) {
    Observers().push_back(&observer);
    ActiveCallObservers = &Observers();
}

void RemoveCallObserver(TCallObserver& observer) {
    std::erase(Observers(), &observer);
    if (Observers().empty()) ActiveCallObservers = nullptr;
}

void TellRoundTrip(std::string_view request) {
    if (!ActiveCallObservers) return;
    for (TCallObserver* observer : *ActiveCallObservers)
        observer->RoundTrip(request);
}

void TCall::Start(std::string_view operation) {
    for (TCallObserver* observer : *ActiveCallObservers)
        observer->OperationStarts(operation);
    FOperation = operation;
    FExceptions = std::uncaught_exceptions();
}

void TCall::End() {
    if (!ActiveCallObservers) return;
    const bool failed = std::uncaught_exceptions() > FExceptions;
    for (TCallObserver* observer : *ActiveCallObservers)
        observer->OperationEnds(FOperation, failed);
}

TCallRecorder::TCallRecorder() {
    AddCallObserver(*this);
}

TCallRecorder::~TCallRecorder() {
    RemoveCallObserver(*this);
}

void TCallRecorder::FailOperation(const std::string& operation, const std::string& message, int times) {
    FFailures[operation] = {message, times};
}

std::int64_t TCallRecorder::CallsOf(const std::string& operation) const {
    return std::count(FOperations.begin(), FOperations.end(), operation);
}

void TCallRecorder::Clear() {
    FOperations.clear();
    FRoundTrips.clear();
}

void TCallRecorder::OperationStarts(std::string_view operation) {
    FOperations.emplace_back(operation);
    const auto failure = FFailures.find(operation);
    if (failure == FFailures.end() || failure->second.Times == 0) return;
    --failure->second.Times;
    RaiseFailure(failure->second.Message);
}

void TCallRecorder::RoundTrip(std::string_view request) {
    FRoundTrips.emplace_back(request);
}

TCallTrace::TCallTrace(const std::string& fileName)
    : FFile(fileName, std::ios::app) {
    AddCallObserver(*this);
}

TCallTrace::~TCallTrace() {
    RemoveCallObserver(*this);
}

void TCallTrace::OperationStarts(std::string_view operation) {
    Line("", operation, "");
    FStarts.push_back(MicrosecondsNow());
}

void TCallTrace::OperationEnds(std::string_view operation, bool failed) {
    if (FStarts.empty()) return;
    const std::int64_t spent = MicrosecondsNow() - FStarts.back();
    FStarts.pop_back();
    Line(failed ? "failed " : "done ", operation, " " + std::to_string(spent) + " us");
    if (FStarts.empty()) FFile.flush();
}

void TCallTrace::RoundTrip(std::string_view request) {
    Line("-> ", request, "");
}

void TCallTrace::Line(std::string_view mark, std::string_view name, std::string_view rest) {
    FFile << std::string(2 * FStarts.size(), ' ') << mark << name << rest << '\n';
}

} // namespace Sdk
