#include "frost_guard.h"

namespace hearth {

namespace {
constexpr Celsius kSwitchOn = 5;
constexpr Celsius kSwitchOff = 7;
constexpr Celsius kColdOutside = 3;
constexpr Seconds kHour = 3600;
constexpr Seconds kBlindHeating = 600;
constexpr Percent kFull = 100;
} // namespace

Percent FrostGuard::Apply(Percent demand, std::optional<Celsius> temperature, std::optional<Celsius> outside,
                          Seconds uptime) {
    if (!temperature) {
        const bool cold = !outside || *outside < kColdOutside;
        FActive = cold && uptime % kHour < kBlindHeating;
    } else if (*temperature < kSwitchOn) {
        FActive = true;
    } else if (*temperature >= kSwitchOff) {
        FActive = false;
    }
    return FActive ? kFull : demand;
}

} // namespace hearth
