#pragma once

#include <vector>

#include "types.h"

namespace hearth {

constexpr int kTimesPerDay = 8;
constexpr int kMinutesPerDay = 24 * 60;

struct SwitchingTime {
    int minuteOfDay = 0;
    Celsius wanted = 20;
};

// The week of one zone, and how early it has to start to be warm in time.
class Schedule {
public:
    // False, and no change, when there are more than eight times, when they don't
    // ascend, or when one isn't a multiple of five minutes.
    bool SetDay(int day, const std::vector<SwitchingTime>& times);
    Celsius WantedAt(int day, int minuteOfDay) const;
    // The same, looking ahead as far as the zone needs to warm up from `measured`.
    Celsius WantedWithPreheat(int day, int minuteOfDay, Celsius measured) const;
    void LearnWarmUp(Celsius risen, Seconds took);
    float KelvinPerHour() const { return FKelvinPerHour; }

private:
    std::array<std::vector<SwitchingTime>, 7> FDays;
    float FKelvinPerHour = 0.8f;
};

} // namespace hearth
