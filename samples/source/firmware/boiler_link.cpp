// Asks the boiler for heat and notices when the bus is lost.
#include <algorithm>
#include <span>

#include "types.h"

namespace hearth {

namespace {
constexpr Seconds kRestAfterBurning = 6 * 60;
constexpr int kLostAfterSilence = 6;
constexpr Celsius kLowestFlow = 25;
constexpr float kKelvinPerPercent = 0.35f;
} // namespace

class BoilerBus {
public:
    virtual ~BoilerBus() = default;
    // Empty when the boiler didn't answer.
    virtual std::optional<bool> AskBurning() = 0;
    virtual void WantFlow(Celsius flow) = 0;
    virtual void CloseRelayContact(bool closed) = 0;
};

struct ZoneDemand {
    Percent demand;
    Celsius highestFlow;
    bool frostGuard;
};

class BoilerLink {
public:
    explicit BoilerLink(BoilerBus& bus)
        : FBus(bus) {}

    void Step(std::span<const ZoneDemand> zones, Seconds uptime) {
        Celsius flow = 0;
        bool frost = false;
        for (const auto& zone : zones) {
            if (zone.demand <= 0) continue;
            const Celsius needed = kLowestFlow + kKelvinPerPercent * zone.demand;
            flow = std::max(flow, std::min(needed, zone.highestFlow));
            frost = frost || zone.frostGuard;
        }
        const auto burning = FBus.AskBurning();
        FSilence = burning ? 0 : FSilence + 1;
        if (burning.value_or(false)) FLastBurned = uptime;
        const bool resting =
            FLastBurned && !burning.value_or(true) && uptime - *FLastBurned < kRestAfterBurning;
        FBus.WantFlow(resting && !frost ? 0 : flow);
        FBus.CloseRelayContact(Lost() && flow > 0);
    }

    bool Lost() const { return FSilence >= kLostAfterSilence; }

private:
    BoilerBus& FBus;
    int FSilence = 0;
    std::optional<Seconds> FLastBurned;
};

} // namespace hearth
