#pragma once

#include "frost_guard.h"
#include "pid.h"
#include "plausibility.h"

namespace hearth {

// Decides the demand of one zone from its readings, once in ten seconds.
class ZoneControl {
public:
    explicit ZoneControl(Circuit circuit);

    struct Input {
        std::array<std::optional<Reading>, kSensorsPerZone> readings;
        std::optional<Reading> floor;
        std::optional<Celsius> outside;
        Celsius wanted = 20;
        Seconds uptime = 0;
    };
    Percent Step(const Input& input);
    bool WindowOpen() const { return FWindowClosedFor > 0; }

private:
    std::optional<Celsius> Filter(const Input& input);
    void WatchWindow(Celsius temperature);
    bool FloorTooWarm(const Input& input);

    Circuit FCircuit;
    Pid FPid;
    FrostGuard FFrostGuard;
    std::array<Plausibility, kSensorsPerZone> FSensors;
    Plausibility FFloorSensor;
    std::array<Celsius, 3> FLastThree{};
    std::array<Celsius, 24> FLastMinutes{};
    int FSamples = 0;
    int FWindowClosedFor = 0;
    Celsius FColdestSinceWindow = 0;
};

// Opens a valve for the share of each cycle that equals the demand.
class ValvePulses {
public:
    explicit ValvePulses(Seconds offset)
        : FOffset(offset) {}
    bool Open(Percent demand, Seconds uptime);

private:
    Seconds FOffset;
    Seconds FOpenFor = 0;
    float FCarried = 0;
};

} // namespace hearth
