#include "zone_control.h"

#include <algorithm>

namespace hearth {

namespace {
constexpr Celsius kFloorLimit = 29;
constexpr Celsius kWindowFall = 1.5f;
constexpr Celsius kWindowRise = 0.3f;
constexpr int kWindowSteps = 180;
constexpr Seconds kCycle = 1200;
constexpr Seconds kShortestPulse = 120;

Celsius Median(std::array<Celsius, 3> values) {
    std::sort(values.begin(), values.end());
    return values[1];
}
} // namespace

ZoneControl::ZoneControl(Circuit circuit)
    : FCircuit(circuit)
    , FPid(GainsOf(circuit)) {}

std::optional<Celsius> ZoneControl::Filter(const Input& input) {
    std::optional<Celsius> lowest;
    for (int i = 0; i < kSensorsPerZone; ++i) {
        if (!input.readings[i]) continue;
        const auto value = FSensors[i].Check(*input.readings[i], input.uptime);
        if (value && (!lowest || *value < *lowest)) lowest = value;
    }
    if (!lowest) return std::nullopt;
    if (FSamples == 0) FLastThree.fill(*lowest);
    FLastThree[FSamples % FLastThree.size()] = *lowest;
    return Median(FLastThree);
}

void ZoneControl::WatchWindow(Celsius temperature) {
    if (FSamples == 0) FLastMinutes.fill(temperature);
    const Celsius before = FLastMinutes[FSamples % FLastMinutes.size()];
    FLastMinutes[FSamples % FLastMinutes.size()] = temperature;
    if (FWindowClosedFor > 0) {
        FColdestSinceWindow = std::min(FColdestSinceWindow, temperature);
        const bool warmer = temperature - FColdestSinceWindow >= kWindowRise;
        FWindowClosedFor = warmer ? 0 : FWindowClosedFor - 1;
    } else if (before - temperature > kWindowFall) {
        FWindowClosedFor = kWindowSteps;
        FColdestSinceWindow = temperature;
    }
    ++FSamples;
}

bool ZoneControl::FloorTooWarm(const Input& input) {
    if (FCircuit != Circuit::Floor || !input.floor) return false;
    const auto floor = FFloorSensor.Check(*input.floor, input.uptime);
    return floor && *floor > kFloorLimit;
}

Percent ZoneControl::Step(const Input& input) {
    const auto temperature = Filter(input);
    Percent demand = 0;
    if (temperature) {
        WatchWindow(*temperature);
        demand = FPid.Step(input.wanted, *temperature);
    }
    if (WindowOpen() || FloorTooWarm(input)) demand = 0;
    return FFrostGuard.Apply(demand, temperature, input.outside, input.uptime);
}

bool ValvePulses::Open(Percent demand, Seconds uptime) {
    const Seconds inCycle = (uptime + kCycle - FOffset % kCycle) % kCycle;
    if (inCycle < 10) {
        const float share = demand / 100 * kCycle + FCarried;
        const float usable = share < kShortestPulse ? 0 : share > kCycle - kShortestPulse ? kCycle : share;
        FOpenFor = static_cast<Seconds>(usable);
        FCarried = share - usable;
    }
    return inCycle < FOpenFor;
}

} // namespace hearth
