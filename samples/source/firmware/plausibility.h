#pragma once

#include "types.h"

namespace hearth {

// Decides which readings of one sensor can be believed, and when the sensor is lost.
class Plausibility {
public:
    // The reading's value when it is plausible.
    std::optional<Celsius> Check(const Reading& reading, Seconds now);
    bool Lost() const { return FLost; }

private:
    bool Plausible(const Reading& reading, Seconds now) const;

    std::optional<Celsius> FLastGood;
    int FRejectedInARow = 0;
    int FGoodInARow = 0;
    bool FLost = false;
};

} // namespace hearth
