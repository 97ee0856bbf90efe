// Two clients that lock, move, remove and reparent the same nodes at the same moment:
// what cannot both be done is done once, the other one is told why, and the tree stays
// whole. QUORANE_RACE_SECONDS makes it run longer, QUORANE_RACE_SEED again.
#include "ServiceFixture.h"
#include "support/SoundDatabase.h"

#include <gmock/gmock.h>

#include <array>
#include <barrier>
#include <chrono>
#include <random>
#include <set>
#include <thread>

using namespace testing;

namespace {

enum class Action { Lock, Move, Remove, Reparent };
constexpr Action Actions[] = {Action::Lock, Action::Move, Action::Remove, Action::Reparent};
constexpr std::size_t FewNodes = 12;
const std::string Reasons = "[A-Za-z]+Exception: .*(is locked by (Ann Miller|Ben Ortega)|There is no|"
                            "moved elsewhere|below itself).*";

int FromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::stoi(text) : otherwise;
}

// A pair of which the server can grant only one, whichever comes first. Reparenting is
// done crosswise, each node under the other.
bool ExcludeEachOther(Action one, Action two) {
    return one == two ? one != Action::Move
                      : std::minmax(one, two) == std::minmax(Action::Lock, Action::Remove);
}

class RaceTest : public ServiceFixture {
protected:
    struct Place {
        int Parent = 0, Node = 0;
    };

    // Every requirement of both types, as it stands now.
    std::vector<Place> Places() {
        std::vector<Place> places;
        Collect(FSrs, places);
        Collect(FTst, places);
        return places;
    }

    void Do(Client& client, Action action, Place place, int other, int position) {
        switch (action) {
        case Action::Lock:
            return client.Lock(place.Node);
        case Action::Move:
            return client.Move(FCurrent, place.Parent, place.Node, position);
        case Action::Remove:
            return static_cast<void>(client.Remove(place.Node));
        case Action::Reparent:
            return client.AddChild(FCurrent, other, place.Node);
        }
    }

    // Both clients start at once; gives what each was told.
    std::array<std::string, 2> Race(const std::array<Action, 2>& actions, Place one, Place two,
                                    int position) {
        std::array<std::string, 2> told;
        std::barrier start(2);
        std::thread other([&] {
            start.arrive_and_wait();
            // Crosswise only where both reparent; else both want the same node.
            const bool crosswise = actions[0] == Action::Reparent && actions[1] == Action::Reparent;
            told[1] = RefusalOf([&] {
                Do(FBen, actions[1], crosswise ? two : one, crosswise ? one.Node : two.Node, position);
            });
        });
        start.arrive_and_wait();
        told[0] = RefusalOf([&] { Do(FAnn, actions[0], one, two.Node, position); });
        other.join();
        return told;
    }

    void ReleaseLocks(int node) {
        for (Client* client : {&FAnn, &FBen})
            EXPECT_THAT(RefusalOf([&] { client->Unlock(node); }), AnyOf("", HasSubstr("is locked by")))
                << "by the other one of the two";
    }

    void ExpectWhole() {
        std::set<int> seen;
        for (const Place& place : Places())
            EXPECT_TRUE(seen.insert(place.Node).second) << place.Node << " stands in two places";
        Backend::Database database(FFolder.File("quorane.db"));
        ExpectSound(database);
    }

    Client FAnn = LoggedOn("ann");
    Client FBen = LoggedOn("ben");

private:
    void Collect(int parent, std::vector<Place>& places) {
        for (const wire::Node& child : FAnn.Children(FCurrent, parent)) {
            places.push_back({parent, child.id()});
            Collect(child.id(), places);
        }
    }
};

TEST_F(RaceTest, GivesOneOfEachPairAReasonAndLeavesTheTreeWhole) {
    const auto seed = static_cast<unsigned>(
        FromEnvironment("QUORANE_RACE_SEED", static_cast<int>(std::random_device{}() % 1'000'000)));
    std::printf("QUORANE_RACE_SEED=%u\n", seed);
    std::mt19937 random(seed);
    const auto below = [&](std::size_t count) { return static_cast<int>(random() % count); };
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(FromEnvironment("QUORANE_RACE_SECONDS", 3));
    int rounds = 0, refusals = 0;
    for (; std::chrono::steady_clock::now() < end && !HasFailure(); ++rounds) {
        std::vector<Place> places = Places();
        for (; places.size() < FewNodes; places = Places())
            FAnn.Create(FProject, rounds % 2 ? FSrs : FTst, places.empty() ? 0 : places[0].Node, "N", 0);
        const Place one = places[static_cast<std::size_t>(below(places.size()))];
        const Place two = places[static_cast<std::size_t>(below(places.size()))];
        if (one.Node == two.Node) continue;
        const std::array actions{Actions[below(4)], Actions[below(4)]};
        const auto told = Race(actions, one, two, below(5));
        const auto refused = 2 - std::ranges::count(told, std::string());
        SCOPED_TRACE("round " + std::to_string(rounds) + ": \"" + told[0] + "\", \"" + told[1] + "\"");
        EXPECT_THAT(refused, AllOf(Ge(ExcludeEachOther(actions[0], actions[1]) ? 1 : 0), Le(1)));
        EXPECT_THAT(told, Each(AnyOf(IsEmpty(), MatchesRegex(Reasons))));
        refusals += static_cast<int>(refused);
        ReleaseLocks(one.Node);
    }
    ExpectWhole();
    EXPECT_GT(refusals, 0) << rounds << " rounds";
}

} // namespace
