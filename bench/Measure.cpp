#include "Limits.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>

double Median(std::vector<double> values) {
    if (values.empty()) throw std::logic_error("the median of nothing");
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double TimeOnce(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    return spent.count();
}

namespace {

double Milliseconds(const TTimedWork& timed) {
    if (timed.Prepare) timed.Prepare();
    return TimeOnce(timed.Work);
}

} // namespace

double MedianTime(int runs, const std::function<void()>& work, const std::function<void()>& prepare) {
    std::vector<double> times;
    for (int run = 0; run <= runs; ++run) {
        const double spent = Milliseconds({work, prepare});
        if (run > 0) times.push_back(spent);
    }
    return Median(times);
}

TComparison CompareTimes(int runs, const TTimedWork& ours, const std::vector<TTimedWork>& bare) {
    std::vector<double> ratios;
    std::vector<double> ourTimes;
    std::vector<double> bareTimes;
    for (int run = 0; run <= runs; ++run) {
        const double ourTime = Milliseconds(ours);
        double bareTime = 0;
        for (const TTimedWork& work : bare)
            bareTime += Milliseconds(work);
        if (run == 0) continue;
        ratios.push_back(ourTime / bareTime);
        ourTimes.push_back(ourTime);
        bareTimes.push_back(bareTime);
    }
    return {Median(ratios), Median(ourTimes), Median(bareTimes)};
}

double PrivateMemory() {
    std::ifstream file("/proc/self/smaps_rollup");
    double kilobytes = 0;
    for (std::string word; file >> word;)
        if (word.starts_with("Private_")) {
            double value = 0;
            file >> value;
            kilobytes += value;
        }
    if (kilobytes == 0) throw std::runtime_error("/proc/self/smaps_rollup cannot be read");
    return kilobytes / 1024;
}
