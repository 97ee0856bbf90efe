#include "plausibility.h"

#include <cmath>

namespace hearth {

namespace {
constexpr Celsius kColdest = -20;
constexpr Celsius kHottest = 60;
constexpr Celsius kLargestStep = 2;
constexpr Seconds kOldest = 15;
constexpr int kLostAfter = 4;
constexpr int kBackAfter = 10;
} // namespace

bool Plausibility::Plausible(const Reading& reading, Seconds now) const {
    if (!reading.checksumRight) return false;
    if (now - reading.takenAt >= kOldest) return false;
    if (reading.value < kColdest || reading.value > kHottest) return false;
    return !FLastGood || std::fabs(reading.value - *FLastGood) <= kLargestStep;
}

std::optional<Celsius> Plausibility::Check(const Reading& reading, Seconds now) {
    if (!Plausible(reading, now)) {
        FGoodInARow = 0;
        if (++FRejectedInARow >= kLostAfter) {
            FLost = true;
            FLastGood.reset();
        }
        return std::nullopt;
    }
    FRejectedInARow = 0;
    FLastGood = reading.value;
    if (FLost && ++FGoodInARow >= kBackAfter) {
        FLost = false;
        FGoodInARow = 0;
    }
    if (FLost) return std::nullopt;
    return reading.value;
}

} // namespace hearth
