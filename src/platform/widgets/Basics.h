// The small value types of the component layer: events,
// colours, pictures of pixels, points and sizes, keys. Nothing here knows a widget.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "contracts/Object.h"

// One handler per event. It is called through the dispatcher (Application.h).
template<class... Arguments> using TEvent = std::function<void(Arguments...)>;

struct TPoint {
    int X = 0;
    int Y = 0;
    bool operator==(const TPoint&) const = default;
};

struct TRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool operator==(const TRect&) const = default;
};

// A colour: either a fixed one, red in the low byte, or a named one of the system
// that follows the palette.
class TColor {
public:
    constexpr TColor() = default;
    static constexpr TColor Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return TColor(static_cast<std::uint32_t>(red | green << 8 | blue << 16));
    }
    static constexpr TColor System(std::uint8_t index) { return TColor(0xFF000000U | index); }

    constexpr bool IsSystem() const { return (FValue & 0xFF000000U) == 0xFF000000U; }
    constexpr std::uint8_t Red() const { return static_cast<std::uint8_t>(FValue); }
    constexpr std::uint8_t Green() const { return static_cast<std::uint8_t>(FValue >> 8); }
    constexpr std::uint8_t Blue() const { return static_cast<std::uint8_t>(FValue >> 16); }
    // 0x00BBGGRR for a fixed colour.
    constexpr std::int32_t ToInteger() const { return static_cast<std::int32_t>(FValue); }
    constexpr bool operator==(const TColor&) const = default;

private:
    constexpr explicit TColor(std::uint32_t value)
        : FValue(value) {}
    std::uint32_t FValue = 0;
};

// The system colours that the logic names. clDefault is what the style gives.
inline constexpr TColor clDefault = TColor::System(0xFF);
inline constexpr TColor clWindow = TColor::System(5);
inline constexpr TColor clInactiveCaptionText = TColor::System(19);
// Text and background of hints.
inline constexpr TColor clInfoText = TColor::System(23);
inline constexpr TColor clInfoBk = TColor::System(24);

inline constexpr TColor clBlue = TColor::Rgb(0, 0, 0xFF);

// A picture of Width times Height opaque pixels, black at first.
class TBitmap {
public:
    TBitmap(int width, int height)
        : FWidth(width)
        , FHeight(height)
        , FPixels(static_cast<std::size_t>(width) * height) {}

    int Width() const { return FWidth; }
    int Height() const { return FHeight; }
    TColor Pixel(int x, int y) const { return FPixels[Position(x, y)]; }
    void SetPixel(int x, int y, TColor color) { FPixels[Position(x, y)] = color; }

private:
    std::size_t Position(int x, int y) const { return static_cast<std::size_t>(y) * FWidth + x; }
    int FWidth;
    int FHeight;
    std::vector<TColor> FPixels;
};

enum class TMouseButton { Left, Right, Middle };

// Tab stands for Backtab as well, which is Tab with Shift.
enum class TKey {
    Other,
    Backspace,
    Delete,
    F2,
    F5,
    Enter,
    Escape,
    Tab,
    Space,
    Insert,
    Home,
    End,
    Up,
    Down,
    Left,
    Right
};

struct TShiftState {
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;
};

class TWinControl;

// A key on its way to the control that has the focus.
struct TKeyMessage {
    bool Down = true; // else up
    TKey Key = TKey::Other;
    // Of a letter's key, in capitals; 0 for any other key.
    char Letter = 0;
    TShiftState Shift;
    // Empty when none of this layer's controls has the focus.
    TWinControl* Window = nullptr;
};

// How a control is placed in its parent: not at all (its bounds stand), along an
// edge in the order of creation, or in what the others leave.
enum class TAlign { None, Top, Bottom, Left, Right, Client };

enum class TOrientation { Horizontal, Vertical };
