#include "ServiceFixture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

class LockTest : public ServiceFixture {
public:
    Client FAnn = LoggedOn("ann");
    Client FBen = LoggedOn("ben");

    std::string SaveBy(Client& client) {
        wire::SaveRequirementRequest request;
        request.set_id(Id("Two"));
        request.set_name("Saved");
        return RefusalOf([&] { client.Save(request); });
    }

    std::string HeldByBen() const {
        return "ObjectLockedException: The requirement SRS" + std::to_string(Id("Two")) +
               " is locked by Ben Ortega.";
    }
};

TEST_F(LockTest, IsRefusedToOthersWhoLearnTheHolder) {
    FBen.Lock(Id("Two"));
    EXPECT_EQ(RefusalOf([&] { FAnn.Lock(Id("Two")); }), HeldByBen());
    EXPECT_EQ(RefusalOf([&] { FAnn.Unlock(Id("Two")); }), HeldByBen());
    EXPECT_EQ(RefusalOf([&] { FBen.Lock(Id("Two")); }), "");
    wire::GetRequirementRequest read;
    read.set_latest_id(Id("Two"));
    EXPECT_EQ(FAnn.Call(&Stub::GetRequirement, read).lock().user_name(), "Ben Ortega");
    EXPECT_FALSE(FAnn.Call(&Stub::GetRequirement, read).lock().by_this_session());
    EXPECT_TRUE(FBen.Call(&Stub::GetRequirement, read).lock().by_this_session());
    FBen.Unlock(Id("Two"));
    EXPECT_EQ(RefusalOf([&] { FAnn.Lock(Id("Two")); }), "");
}

TEST_F(LockTest, IsNeededForASave) {
    const std::string notLocked = "Object is not locked by current user";
    EXPECT_THAT(SaveBy(FAnn), HasSubstr(notLocked));
    FBen.Lock(Id("Two"));
    EXPECT_THAT(SaveBy(FAnn), HasSubstr(notLocked));
    EXPECT_EQ(SaveBy(FBen), "");
    FBen.Unlock(Id("Two"));
    EXPECT_THAT(SaveBy(FBen), HasSubstr(notLocked));
}

TEST_F(LockTest, LivesWhileItIsRenewedAndNoLonger) {
    FBen.Lock(Id("Two"));
    for (int i = 0; i < 5; ++i) {
        Advance(*this, 50);
        const auto reply = FBen.Call(&Stub::KeepAlive, wire::KeepAliveRequest());
        EXPECT_THAT(reply.locked_ids(), ElementsAre(Id("Two")));
    }
    EXPECT_EQ(RefusalOf([&] { FAnn.Lock(Id("Two")); }), HeldByBen());
    Advance(*this, 60);
    EXPECT_THAT(SaveBy(FBen), HasSubstr("not locked"));
    EXPECT_THAT(FBen.Call(&Stub::KeepAlive, wire::KeepAliveRequest()).locked_ids(), IsEmpty());
    EXPECT_EQ(RefusalOf([&] { FBen.Unlock(Id("Two")); }), "");
    EXPECT_EQ(RefusalOf([&] { FAnn.Lock(Id("Two")); }), "");
}

TEST_F(LockTest, GoesWithTheSessionAndToTheUsersNextOne) {
    FBen.Lock(Id("Two"));
    FBen.Call(&Stub::Logout, wire::LogoutRequest());
    EXPECT_EQ(RefusalOf([&] { FAnn.Lock(Id("Two")); }), "");
    Client again = LoggedOn("ann");
    again.Lock(Id("Two"));
    EXPECT_THAT(SaveBy(FAnn), HasSubstr("not locked"));
    EXPECT_EQ(SaveBy(again), "");
}

TEST_F(LockTest, KeepsABranchFromBeingRemovedByOthers) {
    FBen.Lock(Id("One.B"));
    EXPECT_THAT(RefusalOf([&] { FAnn.Remove(Id("One")); }),
                AllOf(HasSubstr("ObjectLockedException"), HasSubstr("SRS" + std::to_string(Id("One.B")))));
    EXPECT_EQ(FBen.Remove(Id("One")), 4);
}

} // namespace
