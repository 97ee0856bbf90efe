#include <gtest/gtest.h>

#include "server/FakeBinding.h"
#include "server/Quorane_TLB_Components.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;

namespace {

// A component whose server never comes up.
class TUnconnectable : public THTMLHelperFactory {
public:
    void Connect() override {}
};

class ComponentTest : public testing::Test {
protected:
    ComponentTest() { Classes.Register(CLASS_RequirementIDFactory, Factory); }

    TFakeClasses Classes;
    std::shared_ptr<testing::NiceMock<TMockRequirementIDFactory>> Factory =
        MakeMock<TMockRequirementIDFactory>();
};

TEST_F(ComponentTest, StartsItsClassAtTheFirstCallAndKeepsTheObject) {
    TRequirementIDFactory component;
    EXPECT_TRUE(Classes.Machines.empty());
    EXPECT_CALL(*Factory, Create1(12)).Times(2);
    component.Create1(12);
    component.Create1(12);
    component.Connect();
    EXPECT_EQ(Classes.Machines.size(), 1U);
}

TEST_F(ComponentTest, UsesTheObjectThatItWasConnectedTo) {
    const auto other = MakeMock<TMockRequirementIDFactory>();
    TRequirementIDFactory component;
    component.Connect();
    component.ConnectTo(other);
    EXPECT_CALL(*Factory, Create11(_, _, _, _)).Times(0);
    EXPECT_CALL(*other, Create11(1, 2, 3, 4));
    component.Create11(1, 2, 3, 4);
}

TEST_F(ComponentTest, StartsItsClassAgainAfterADisconnect) {
    TRequirementIDFactory component;
    component.Connect();
    component.Disconnect();
    EXPECT_EQ(component.GetDefaultInterface(), Factory);
    EXPECT_EQ(Classes.Machines.size(), 2U);
}

TEST_F(ComponentTest, SaysThatItIsNotConnected) {
    TUnconnectable component;
    try {
        component.Create1();
        FAIL() << "a call went through without an object";
    } catch (const EOleSysError& error) {
        EXPECT_STREQ(error.what(), "DefaultInterface is NULL. Component is not connected to Server. "
                                   "You must call 'Connect' or 'ConnectTo' before this operation");
    }
}

TEST_F(ComponentTest, KnowsItsClassAndInterfaceAndNoEvents) {
    const TServerData data = TSessionFactory().ServerData();
    EXPECT_EQ(data.ClassID, CLASS_SessionFactory);
    EXPECT_EQ(data.InterfaceID, ISessionFactory::IID);
    EXPECT_EQ(data.EventsID, Guid{});
    EXPECT_EQ(data.Version, 500);
}

TEST_F(ComponentTest, OffersTheConstantsOfTheParentsToo) {
    const auto statics = MakeMock<TMockUDADurationStatics>();
    TUDADurationStatics component;
    component.ConnectTo(statics);
    ON_CALL(*statics, Get_GRANULARITY_WEEKS()).WillByDefault(Return(6));
    ON_CALL(*statics, Get_INITIAL_VALUE_FORCE()).WillByDefault(Return(2));
    ON_CALL(*statics, Get_FIELD_NAME()).WillByDefault(Return(u"Name"));
    EXPECT_EQ(component.Get_GRANULARITY_WEEKS(), 6);
    EXPECT_EQ(component.Get_INITIAL_VALUE_FORCE(), 2);
    EXPECT_EQ(component.Get_FIELD_NAME(), u"Name");
}

TEST_F(ComponentTest, WalksACollectionByName) {
    const auto list = MakeMock<TMockStCollection>();
    TCollection component;
    component.ConnectTo(list);
    EXPECT_CALL(*list, Get_Item(Variant(3))).WillOnce(Return(Variant(u"third")));
    EXPECT_EQ(component.Get_Item(3), Variant(u"third"));
}

} // namespace
