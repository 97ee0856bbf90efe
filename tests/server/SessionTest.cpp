#include "server/ServerFixture.h"

using namespace Quorane_TLB;
using testing::_;
using testing::InSequence;
using testing::Return;
using testing::Throw;

namespace {

class SessionTest : public TServerTest {
protected:
    SessionTest() { Object.Login("dev7", "ben", "secret"); }

    TQuoraneSession Object;
};

TEST_F(SessionTest, FindsByIdentityAndByNumberThroughTheSession) {
    const auto id = MakeMock<TMockRequirementID>();
    const auto frozen = MakeMock<TMockRequirement>();
    const auto latest = MakeMock<TMockRequirement>();
    EXPECT_CALL(*Session, get(Handle<IQuoraneObjectID>(id))).WillOnce(Return(frozen));
    EXPECT_CALL(*Session, getLatestRequirement(12)).WillOnce(Return(latest));
    EXPECT_EQ(Object.FindRequirement(id), frozen);
    EXPECT_EQ(Object.FindLatestRequirement(12), latest);
}

TEST_F(SessionTest, RefusesToTakeAnotherObjectForARequirementType) {
    const auto id = MakeMock<TMockRequirementTypeID>();
    EXPECT_CALL(*Session, get(_)).WillOnce(Return(MakeMock<TMockUser>()));
    EXPECT_THROW(Object.FindRequirementType(id), EConvertError);
}

TEST_F(SessionTest, PassesFailuresOfALookupOn) {
    EXPECT_CALL(*Session, getLatestRequirement(5)).WillOnce(Throw(ServerFailure("NoSuchObjectException")));
    EXPECT_THROW(Object.FindLatestRequirement(5), EOleSysError);
}

TEST_F(SessionTest, AsksTheServerForItsListsAtEveryCall) {
    EXPECT_CALL(*Session, Get_Users()).Times(2).WillRepeatedly([] { return ListOf(MakeMock<TMockUser>()); });
    for (int i = 0; i < 2; ++i) {
        const auto users = Object.GetUserList()->GetEnumerator();
        EXPECT_TRUE(users->MoveNext());
        EXPECT_TRUE(Query<IUser>(users->GetCurrent()));
        EXPECT_FALSE(users->MoveNext());
    }
}

TEST_F(SessionTest, ReadsRequirementTypesOfTheCurrentBaselineWithoutASession) {
    const auto project = MakeMock<TMockProject>();
    const auto baseline = MakeMock<TMockBaseline>();
    const auto types = ListOf(MakeMock<TMockRequirementType>());
    EXPECT_CALL(*project, Get_CurrentBaseline()).WillOnce(Return(baseline));
    EXPECT_CALL(*baseline, Get_RequirementTypes()).WillOnce(Return(types));
    Object.Logout();
    EXPECT_EQ(Object.GetProjectRequirementTypes(project)->GetCollection(), types);
}

TEST_F(SessionTest, RaisesInPlaceOfALookupWhenNotLoggedIn) {
    Object.Logout();
    EXPECT_THROW(Object.FindLatestRequirement(1), EOleSysError);
    EXPECT_THROW(Object.GetProjects(), EOleSysError);
    EXPECT_THROW(Object.TraceManager(), EOleSysError);
}

class RequirementCreationTest : public SessionTest {
protected:
    RequirementCreationTest() {
        Classes.Register(CLASS_RequirementFactory, Factory);
        ON_CALL(*Node, Get_IsRequirement()).WillByDefault(Return(WordTrue));
        ON_CALL(*Node, Get_ID()).WillByDefault(Return(Id));
    }

    std::shared_ptr<testing::NiceMock<TMockRequirementFactory>> Factory = MakeMock<TMockRequirementFactory>();
    std::shared_ptr<testing::NiceMock<TMockRequirementTreeNode>> Node = MakeMock<TMockRequirementTreeNode>();
    std::shared_ptr<testing::NiceMock<TMockProject>> Project = MakeMock<TMockProject>();
    std::shared_ptr<testing::NiceMock<TMockRequirement>> Parent = MakeMock<TMockRequirement>();
    std::shared_ptr<testing::NiceMock<TMockRequirement>> Created = MakeMock<TMockRequirement>();
    Handle<IQuoraneObjectID> Id = MakeMock<TMockRequirementTypeID>();
};

TEST_F(RequirementCreationTest, AppendsToARequirement) {
    EXPECT_CALL(*Node, Get_ChildCount()).WillOnce(Return(3));
    EXPECT_CALL(*Factory, Create1(_, _, _, _, _)).Times(0);
    EXPECT_CALL(*Factory, Create2(std::u16string(u"Gr\u00F6\u00DFe"), Handle<IRequirement>(Parent), 3,
                                  Handle<ISession>(Session)))
        .WillOnce(Return(Created));
    EXPECT_EQ(Object.CreateRequirementAsChild(Node, Project, Parent,
                                              "Gr\xC3\xB6\xC3\x9F"
                                              "e"),
              Created);
}

TEST_F(RequirementCreationTest, AppendsToTheTopLevelOfAType) {
    const auto type = MakeMock<TMockRequirementType>();
    EXPECT_CALL(*Node, Get_IsRequirement()).WillRepeatedly(Return(WordFalse));
    EXPECT_CALL(*Node, Get_ChildCount()).WillOnce(Return(0));
    EXPECT_CALL(*Session, get(Id)).WillOnce(Return(type));
    EXPECT_CALL(*Factory, Create1(std::u16string(u"Range"), Handle<IProject>(Project),
                                  Handle<IRequirementType>(type), 0, Handle<ISession>(Session)))
        .WillOnce(Return(Created));
    EXPECT_EQ(Object.CreateRequirementAsChild(Node, Project, {}, "Range"), Created);
}

TEST_F(RequirementCreationTest, TakesTheGivenPositionAndSavesNothing) {
    EXPECT_CALL(*Factory, Create2(_, _, 1, _)).WillOnce(Return(Created));
    EXPECT_CALL(*Created, save()).Times(0);
    EXPECT_CALL(*Created, save(_)).Times(0);
    EXPECT_EQ(Object.CreateRequirementAboveOrBelow(Node, Project, Parent, "Range", 1), Created);
}

class EnvironmentTest : public testing::Test {
protected:
    EnvironmentTest() {
        Classes.Register(CLASS_Initializer, Initializer);
        ON_CALL(*Initializer, Get_VersionInformation()).WillByDefault(Return(Sdk));
        ON_CALL(*Initializer, Get_JavaConfiguration()).WillByDefault(Return(Java));
        ON_CALL(*Java, Get_RunningJavaVM()).WillByDefault(Return(Machine));
        ON_CALL(*Sdk, Get_Version()).WillByDefault(Return(u"5.0.2"));
        ON_CALL(*Machine, Get_Version()).WillByDefault(Return(u"17.0.8"));
    }

    TFakeSystemServices System;
    TFakeClasses Classes;
    std::shared_ptr<testing::NiceMock<TMockStInitializer>> Initializer = MakeMock<TMockStInitializer>();
    std::shared_ptr<testing::NiceMock<TMockStComWrapperVersionInfo>> Sdk =
        MakeMock<TMockStComWrapperVersionInfo>();
    std::shared_ptr<testing::NiceMock<TMockStJavaConfiguration>> Java = MakeMock<TMockStJavaConfiguration>();
    std::shared_ptr<testing::NiceMock<TMockStRunningJavaVM>> Machine = MakeMock<TMockStRunningJavaVM>();
};

TEST_F(EnvironmentTest, IsDescribedInTwoLines) {
    System.TypeLibraries["{10430000-72AE-11D5-B316-0800309CC2CE}"] = "/opt/quorane/sdk.tlb";
    System.FileVersions["/opt/quorane/sdk.tlb"] = "5.0.2.118";
    EXPECT_EQ(TQuoraneSession::EnvironmentDescription(),
              "Quorane SDK Version: 5.0.2 (5.0.2.118)\r\nJava Version: 17.0.8");
}

TEST_F(EnvironmentTest, IsDescribedWithoutARegisteredLibrary) {
    EXPECT_EQ(TQuoraneSession::EnvironmentDescription(),
              "Quorane SDK Version: 5.0.2 ()\r\nJava Version: 17.0.8");
}

TEST_F(EnvironmentTest, FailsWhereTheSdkCannotBeUsed) {
    EXPECT_CALL(*Java, Get_RunningJavaVM()).WillOnce(Throw(ServerFailure("no virtual machine")));
    EXPECT_THROW(TQuoraneSession::EnvironmentDescription(), EOleSysError);
    SetClassObjectProvider({});
    EXPECT_THROW(TQuoraneSession::EnvironmentDescription(), EOleSysError);
}

TEST(EstimatingTool, LiesBesideTheDesktopClient) {
    TFakeSystemServices system;
    EXPECT_EQ(TQuoraneSession::TallyworksExecutable(), "Quorane Tallyworks Pluggin.EXE");
    system.MachineSettings[{"SOFTWARE\\Vantrel\\Quorane", "Quorane_EXE"}] = "/opt/quorane/bin/client";
    EXPECT_EQ(TQuoraneSession::TallyworksExecutable(), "/opt/quorane/bin/Quorane Tallyworks Pluggin.EXE");
}

} // namespace
