// What the benchmarks report: a line for each limit, held or broken.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct TLimit {
    std::string Name;
    double Limit;
    double Measured;
    std::string Unit; // "round trips", "x", "ms", "MB"
    // Figures that the line shows behind the verdict.
    std::string Detail = {};

    bool Held() const { return Measured <= Limit; }
};

using TLimits = std::vector<TLimit>;

// The middle one of the values; they are counted in milliseconds, say.
double Median(std::vector<double> values);

// How long the work takes, in milliseconds.
double TimeOnce(const std::function<void()>& work);

// How long the work takes, in milliseconds: the median of so many runs after one that
// does not count. Prepare runs before each one and is not timed.
double MedianTime(int runs, const std::function<void()>& work, const std::function<void()>& prepare = {});

// Something to time, and what must be done before each time without being timed.
struct TTimedWork {
    std::function<void()> Work;
    std::function<void()> Prepare = {};
};

struct TComparison {
    double Ratio; // the median of the ratios
    double Ours;  // medians in milliseconds
    double Bare;
};

// How many times as long our work takes as all bare works together. They take turns,
// so that a machine that others use slows both sides of each ratio. A first round
// does not count.
TComparison CompareTimes(int runs, const TTimedWork& ours, const std::vector<TTimedWork>& bare);

// Resident memory that belongs to this process alone, in MB.
double PrivateMemory();

// Each measures what its name says and gives its limits.
TLimits MeasureRoundTrips();
TLimits MeasureBranch();
TLimits MeasureProjectSize(const std::string& program);
TLimits MeasureHostStart(const std::string& binaryFolder);
TLimits MeasureSave();
TLimits MeasureAttributes();
TLimits MeasureManyClients(int seconds);
TLimits MeasureDescription(const std::string& binaryFolder);

// What MeasureProjectSize runs in a process of its own: logs on to the database and
// prints milliseconds to the shown tree and private memory in MB.
void MeasureLogonOnly(const std::string& database);
