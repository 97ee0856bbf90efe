// Pairing and confirmed changes between room sensors and the control unit.
#include <algorithm>
#include <vector>

#include "types.h"

namespace hearth {

namespace {
constexpr Seconds kPairingWindow = 60;
constexpr Celsius kLowestWanted = 5;
constexpr Celsius kHighestWanted = 30;
} // namespace

struct Frame {
    std::uint32_t sensor = 0;
    std::uint8_t number = 0;
    bool pressed = false;
    std::optional<Celsius> wanted;
};

class SensorRadio {
public:
    void PressAtUnit(Seconds uptime) { FPressedAt = uptime; }

    // True when the sensor is known after the frame.
    bool Pair(const Frame& frame, Seconds uptime) {
        if (Knows(frame.sensor)) return true;
        const bool open = FPressedAt && uptime - *FPressedAt <= kPairingWindow;
        if (!open || !frame.pressed) return false;
        FSensors.push_back({frame.sensor, std::nullopt});
        return true;
    }

    // The value to confirm; a repeated frame is confirmed again but counts once.
    std::optional<Celsius> Take(const Frame& frame, void (*change)(std::uint32_t sensor, Celsius wanted)) {
        const auto known = Find(frame.sensor);
        if (known == FSensors.end() || !frame.wanted) return std::nullopt;
        const Celsius taken = std::clamp(*frame.wanted, kLowestWanted, kHighestWanted);
        if (known->lastNumber != frame.number) change(frame.sensor, taken);
        known->lastNumber = frame.number;
        return taken;
    }

private:
    struct Sensor {
        std::uint32_t id;
        std::optional<std::uint8_t> lastNumber;
    };
    std::vector<Sensor>::iterator Find(std::uint32_t id) {
        return std::find_if(FSensors.begin(), FSensors.end(), [id](const Sensor& s) { return s.id == id; });
    }
    bool Knows(std::uint32_t id) { return Find(id) != FSensors.end(); }

    std::vector<Sensor> FSensors;
    std::optional<Seconds> FPressedAt;
};

} // namespace hearth
