#pragma once

#include "types.h"

namespace hearth {

struct Gains {
    float proportional;     // percent per kelvin
    Seconds integralTime;   // zero switches the part off
    Seconds derivativeTime; // zero switches the part off
};

Gains GainsOf(Circuit circuit);

// Turns a temperature error into a demand from 0 to 100 percent, one step in ten seconds.
class Pid {
public:
    explicit Pid(Gains gains)
        : FGains(gains) {}
    Percent Step(Celsius wanted, Celsius measured);
    void Reset();

private:
    Gains FGains;
    float FIntegral = 0;
    std::optional<Celsius> FLastMeasured;
};

} // namespace hearth
