// Chooses the firmware image to start, and goes back from one that fails.
#include "types.h"

namespace hearth {

namespace {
constexpr int kTrialStarts = 3;
} // namespace

struct Image {
    std::uint32_t version = 0;
    bool signatureRight = false;
    bool onTrial = false;
    int startsOnTrial = 0;
};

struct Choice {
    int slot;
    // Number of the fault to raise, zero for none.
    int fault;
};

bool Accepts(const Image& image, std::uint32_t lowestVersion) {
    return image.signatureRight && image.version >= lowestVersion;
}

Choice ChooseImage(std::array<Image, 2>& slots, int running, std::uint32_t lowestVersion) {
    const int other = 1 - running;
    Image& candidate = slots.at(other);
    if (!candidate.onTrial) return {running, 0};
    if (!Accepts(candidate, lowestVersion)) {
        candidate.onTrial = false;
        return {running, 52};
    }
    if (candidate.startsOnTrial >= kTrialStarts) {
        candidate.onTrial = false;
        return {running, 51};
    }
    ++candidate.startsOnTrial;
    return {other, 0};
}

} // namespace hearth
