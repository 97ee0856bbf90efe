#include "schedule.h"

#include <algorithm>

namespace hearth {

namespace {
constexpr int kResolution = 5;
constexpr int kEarliest = 4 * 60;
constexpr float kLearningShare = 0.2f;
constexpr Celsius kDefault = 18;
} // namespace

bool Schedule::SetDay(int day, const std::vector<SwitchingTime>& times) {
    if (times.size() > kTimesPerDay) return false;
    int last = -1;
    for (const auto& time : times) {
        if (time.minuteOfDay <= last || time.minuteOfDay >= kMinutesPerDay) return false;
        if (time.minuteOfDay % kResolution != 0) return false;
        last = time.minuteOfDay;
    }
    FDays.at(day) = times;
    return true;
}

Celsius Schedule::WantedAt(int day, int minuteOfDay) const {
    for (int back = 0; back < 7; ++back) {
        const auto& times = FDays.at((day + 7 - back) % 7);
        for (auto time = times.rbegin(); time != times.rend(); ++time) {
            if (back > 0 || time->minuteOfDay <= minuteOfDay) return time->wanted;
        }
    }
    return kDefault;
}

Celsius Schedule::WantedWithPreheat(int day, int minuteOfDay, Celsius measured) const {
    const Celsius now = WantedAt(day, minuteOfDay);
    for (int ahead = kResolution; ahead <= kEarliest; ahead += kResolution) {
        const int minute = minuteOfDay + ahead;
        const Celsius later = WantedAt((day + minute / kMinutesPerDay) % 7, minute % kMinutesPerDay);
        const float minutesNeeded = (later - measured) / FKelvinPerHour * 60;
        if (later > now && minutesNeeded >= static_cast<float>(ahead)) return later;
    }
    return now;
}

void Schedule::LearnWarmUp(Celsius risen, Seconds took) {
    if (risen <= 1 || took == 0) return;
    const float observed = risen * 3600 / static_cast<float>(took);
    FKelvinPerHour += kLearningShare * (observed - FKelvinPerHour);
    FKelvinPerHour = std::clamp(FKelvinPerHour, 0.2f, 6.0f);
}

} // namespace hearth
