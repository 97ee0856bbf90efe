#include "server/ServerFixture.h"

using namespace Quorane_TLB;
using testing::_;
using testing::InSequence;
using testing::Return;
using testing::Throw;

namespace {

const std::u16string Identity = u"VantrelQuoraneAddin";

class IntegrationTest : public TServerTest {
protected:
    IntegrationTest() {
        Classes.Register(CLASS_CollectionFactory, Collections);
        Classes.Register(CLASS_IntegrationFactory, Factory);
        ON_CALL(*Session, Get_IntegrationManager()).WillByDefault(Return(Manager));
        ON_CALL(*Manager, Get_Integrations()).WillByDefault(Return(Known));
        ON_CALL(*Collections, Create1()).WillByDefault(Return(Icon));
        ON_CALL(*Factory, Create1(_, _)).WillByDefault(Return(Added));
        Object.Login("dev7", "ben", "secret");
    }

    static Handle<IIntegration> Named(const std::u16string& name) {
        const auto integration = MakeMock<TMockIntegration>();
        ON_CALL(*integration, Get_Name2()).WillByDefault(Return(name));
        return integration;
    }

    std::shared_ptr<testing::NiceMock<TMockIntegrationManager>> Manager = MakeMock<TMockIntegrationManager>();
    std::shared_ptr<testing::NiceMock<TMockStCollectionFactory>> Collections =
        MakeMock<TMockStCollectionFactory>();
    std::shared_ptr<testing::NiceMock<TMockIntegrationFactory>> Factory = MakeMock<TMockIntegrationFactory>();
    std::shared_ptr<testing::NiceMock<TMockIntegration>> Added = MakeMock<TMockIntegration>();
    std::shared_ptr<TListCollection> Known = ListOf();
    std::shared_ptr<TListCollection> Icon = ListOf();
    TQuoraneSession Object;
};

TEST_F(IntegrationTest, IsFoundBehindOthersAndThenNothingIsWritten) {
    Known->Elements = {Named(u"vantrelquoraneaddin"), Named(Identity), Named(u"Other")};
    EXPECT_CALL(*Factory, Create1(_, _)).Times(0);
    Object.EnsureIntegrationAdded();
    EXPECT_EQ(Known->ItemCalls, 2);
    EXPECT_TRUE(Icon->Elements.empty());
}

TEST_F(IntegrationTest, IsMadeWithNameAndIconAndSavedLast) {
    Known->Elements = {Named(u"Other")};
    const InSequence sequence;
    EXPECT_CALL(*Factory, Create1(Identity, Handle<ISession>(Session))).WillOnce(Return(Added));
    EXPECT_CALL(*Added, Set_Name2(Identity));
    EXPECT_CALL(*Added, Set_Icon(Handle<IStCollection>(Icon)));
    EXPECT_CALL(*Added, save());
    Object.EnsureIntegrationAdded();
    ASSERT_EQ(Icon->Elements.size(), 768U);
    for (const Variant& value : Icon->Elements)
        EXPECT_EQ(value.Kind(), Variant::EKind::Byte);
    const bool blank = std::all_of(Icon->Elements.begin(), Icon->Elements.end(),
                                   [&](const Variant& value) { return value == Icon->Elements.front(); });
    EXPECT_FALSE(blank) << "the icon shows nothing";
}

TEST_F(IntegrationTest, IsDoneWithoutWhereTheServerRefusesIt) {
    EXPECT_CALL(*Added, save()).WillOnce(Throw(ServerFailure("InsufficientRightsException")));
    EXPECT_NO_THROW(Object.EnsureIntegrationAdded());
    EXPECT_CALL(*Factory, Create1(_, _)).WillOnce(Throw(ServerFailure("InsufficientRightsException")));
    EXPECT_NO_THROW(Object.EnsureIntegrationAdded());
}

TEST_F(IntegrationTest, LetsOtherFailuresOut) {
    EXPECT_CALL(*Added, save()).WillOnce(Throw(Exception("disk full")));
    EXPECT_THROW(Object.EnsureIntegrationAdded(), Exception);
    EXPECT_CALL(*Collections, Create1()).WillOnce(Throw(ServerFailure("no collections")));
    EXPECT_THROW(Object.EnsureIntegrationAdded(), EOleSysError);
    EXPECT_CALL(*Manager, Get_Integrations()).WillOnce(Throw(ServerFailure("RemoteServerException")));
    EXPECT_THROW(Object.EnsureIntegrationAdded(), EOleSysError);
}

} // namespace
