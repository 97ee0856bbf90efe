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

double MedianTime(int runs, const std::function<void()>& work, const std::function<void()>& prepare) {
    using TClock = std::chrono::steady_clock;
    std::vector<double> times;
    for (int run = 0; run <= runs; ++run) {
        if (prepare) prepare();
        const auto start = TClock::now();
        work();
        const std::chrono::duration<double, std::milli> spent = TClock::now() - start;
        if (run > 0) times.push_back(spent.count());
    }
    return Median(times);
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
