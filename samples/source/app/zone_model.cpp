// What the app knows of a zone, and the change that is on its way to it.
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace hearth::app {

using Clock = std::chrono::steady_clock;
constexpr auto kSettle = std::chrono::milliseconds(500);

class ZoneModel {
public:
    explicit ZoneModel(std::function<void(double)> send)
        : FSend(std::move(send)) {}

    double Shown() const { return FDial.value_or(FOnItsWay.value_or(FConfirmed)); }
    bool OnItsWay() const { return FOnItsWay.has_value(); }
    const std::string& Refusal() const { return FRefusal; }

    void TurnDial(double wanted, Clock::time_point now) {
        FDial = wanted;
        FLastTurn = now;
        FRefusal.clear();
    }

    // Sends the last position of the dial once it has rested.
    void Tick(Clock::time_point now) {
        if (!FDial || now - FLastTurn < kSettle) return;
        FOnItsWay = FDial;
        FDial.reset();
        FSend(*FOnItsWay);
    }

    void Confirmed(double value) {
        FConfirmed = value;
        FOnItsWay.reset();
    }

    void Refused(std::string sentence) {
        FOnItsWay.reset();
        FRefusal = std::move(sentence);
    }

private:
    std::function<void(double)> FSend;
    double FConfirmed = 20;
    std::optional<double> FOnItsWay;
    std::optional<double> FDial;
    Clock::time_point FLastTurn{};
    std::string FRefusal;
};

} // namespace hearth::app
