// Where a period's edge comes to rest while a finger moves it.
#include <cstdlib>
#include <vector>

namespace hearth::app {

constexpr int kGrid = 5;
constexpr int kPull = 10;
constexpr std::size_t kEdgesPerDay = 8;

int SnapEdge(int minuteOfDay, const std::vector<int>& edgesOfOtherDays) {
    int best = (minuteOfDay + kGrid / 2) / kGrid * kGrid;
    int distance = kPull + 1;
    for (const int edge : edgesOfOtherDays) {
        const int away = std::abs(edge - minuteOfDay);
        if (away < distance) {
            distance = away;
            best = edge;
        }
    }
    return best;
}

bool CanAddPeriod(const std::vector<int>& edges) {
    return edges.size() + 2 <= kEdgesPerDay;
}

} // namespace hearth::app
