#pragma once

#include "types.h"

namespace hearth {

// The last step before the outputs: heats a zone that is about to freeze, whatever
// everything before it has decided.
class FrostGuard {
public:
    // `temperature` is empty while the zone has no plausible reading, `outside` while
    // the outside temperature isn't known. `uptime` counts seconds since the start.
    Percent Apply(Percent demand, std::optional<Celsius> temperature, std::optional<Celsius> outside,
                  Seconds uptime);
    bool Active() const { return FActive; }

private:
    bool FActive = false;
};

} // namespace hearth
