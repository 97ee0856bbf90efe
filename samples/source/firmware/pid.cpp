#include "pid.h"

#include <algorithm>

namespace hearth {

namespace {
constexpr float kStepSeconds = 10;
constexpr Seconds kMinute = 60;
} // namespace

Gains GainsOf(Circuit circuit) {
    switch (circuit) {
    case Circuit::Radiator:
        return {40, 25 * kMinute, 2 * kMinute};
    case Circuit::Floor:
        return {25, 120 * kMinute, 0};
    case Circuit::FanCoil:
        return {60, 10 * kMinute, 1 * kMinute};
    }
    return {0, 0, 0};
}

Percent Pid::Step(Celsius wanted, Celsius measured) {
    const float error = wanted - measured;
    const float slope = FLastMeasured ? (measured - *FLastMeasured) / kStepSeconds : 0;
    FLastMeasured = measured;

    const float proportional = FGains.proportional * error;
    const float derivative = -FGains.proportional * FGains.derivativeTime * slope;
    const float unlimited = proportional + FIntegral + derivative;
    const Percent demand = std::clamp(unlimited, 0.0f, 100.0f);

    const bool drivesFurther = (unlimited > 100 && error > 0) || (unlimited < 0 && error < 0);
    if (FGains.integralTime > 0 && !drivesFurther) {
        FIntegral += FGains.proportional * error * kStepSeconds / FGains.integralTime;
    }
    return demand;
}

void Pid::Reset() {
    FIntegral = 0;
    FLastMeasured.reset();
}

} // namespace hearth
