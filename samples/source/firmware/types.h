// Values that the parts of the control unit's firmware share.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace hearth {

constexpr int kZones = 8;
constexpr int kSensorsPerZone = 4;

using Celsius = float;
using Percent = float;
using Seconds = std::uint32_t;

enum class Circuit : std::uint8_t { Radiator, Floor, FanCoil };

struct Reading {
    Celsius value = 0;
    Seconds takenAt = 0;
    bool checksumRight = false;
};

} // namespace hearth
