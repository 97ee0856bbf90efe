#include <map>
#include <set>

#include <gtest/gtest.h>

#include "server/FakeBinding.h"
#include "server/tlb/InterfaceTable.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;

namespace {

const TInterfaceEntry& EntryOf(std::string_view name) {
    for (const TInterfaceEntry& entry : InterfaceTable())
        if (entry.Name == name) return entry;
    throw std::out_of_range(std::string(name));
}

bool IsMainFamily(const Guid& guid) {
    return guid.Second == LIBID_Quorane.Second && guid.Third == LIBID_Quorane.Third &&
           guid.Rest == LIBID_Quorane.Rest;
}

TEST(InterfaceTable, HoldsEveryInterfaceAndClassOfTheLibraryOnce) {
    std::set<std::string_view> names;
    std::set<std::string_view> classes;
    std::set<Guid> identifiers{LIBID_Quorane};
    std::size_t given = 1;
    for (const TInterfaceEntry& entry : InterfaceTable()) {
        names.insert(entry.Name);
        identifiers.insert(entry.Id);
        ++given;
        if (entry.ClassName.empty()) continue;
        classes.insert(entry.ClassName);
        identifiers.insert(entry.ClassId);
        ++given;
    }
    EXPECT_EQ(InterfaceTable().size(), 240U);
    EXPECT_EQ(names.size(), 240U);
    EXPECT_EQ(classes.size(), 235U);
    EXPECT_EQ(identifiers.size(), given);
}

TEST(InterfaceTable, NumbersTheMainFamilyWithoutAGapAndTheClassNext) {
    std::set<std::uint32_t> numbers;
    for (const TInterfaceEntry& entry : InterfaceTable()) {
        if (!entry.ClassName.empty()) {
            EXPECT_EQ(entry.ClassId.First, entry.Id.First + 1) << entry.Name;
            EXPECT_EQ(entry.ClassId.Rest, entry.Id.Rest) << entry.Name;
        }
        if (!IsMainFamily(entry.Id)) continue;
        EXPECT_EQ(entry.Id.First % 2, 1U) << entry.Name;
        numbers.insert(entry.Id.First);
    }
    EXPECT_EQ(*numbers.begin(), 0x10430001U);
    EXPECT_EQ(*numbers.rbegin(), 0x104301CDU);
    EXPECT_EQ(numbers.size(), (0x104301CDU - 0x10430001U) / 2 + 1);
    EXPECT_EQ(GuidToString(LIBID_Quorane), "{10430000-72AE-11D5-B316-0800309CC2CE}");
}

TEST(InterfaceTable, NamesAClassAsItsInterfaceButForTheKnownExceptions) {
    const std::map<std::string_view, std::string_view> exceptions = {
        {"IStCollection", "Collection"},
        {"IStCollectionEnum", "CollectionEnum"},
        {"IStCollectionFactory", "CollectionFactory"},
        {"IStInitializer", "Initializer"},
        {"IFile", "File_"},
        {"IProperty", "Property_"},
        {"ISet", "Set_"},
        {"IImageID", "imageID"},
        {"ITrace", "trace"},
        {"ITraceID", "traceID"},
        {"IStComWrapperVersionInfo", ""},
        {"IStJavaConfiguration", ""},
        {"IStJavaVMInfo", ""},
        {"IStRunningJavaVM", ""},
        {"IStJavaVMInfoCollection", ""},
    };
    for (const TInterfaceEntry& entry : InterfaceTable()) {
        const auto found = exceptions.find(entry.Name);
        EXPECT_EQ(entry.ClassName, found == exceptions.end() ? entry.Name.substr(1) : found->second);
    }
}

TEST(InterfaceTable, KeepsTheChainsOfParents) {
    const std::vector<std::pair<std::string_view, std::string_view>> parents = {
        {"IQuoraneObject", ""},
        {"IRequirement", "ILockableQuoraneObject"},
        {"IDeletedBaseline", "IBaseline"},
        {"IRequirementTree", "ITree"},
        {"ITree", "IMutableQuoraneObject"},
        {"IUDADurationValue", "IUDAIntegerValue"},
        {"IRequirementTreeID", "ITreeID"},
        {"ITraceManager", "ILockableQuoraneObjectManager"},
        {"IBaselineStatics", "ILockableQuoraneObjectStatics"},
        {"IUDADurationStatics", "IUDAIntegerStatics"},
        {"IRequirementEvent_TypeStatics", "IQuoraneObjectEvent_TypeStatics"},
        {"IWebReference", "IDocumentReference"},
        {"IWebReferenceStatics", ""},
        {"IStCollectionEnum", ""},
    };
    for (const auto& [name, parent] : parents)
        EXPECT_EQ(EntryOf(name).Parent, parent) << name;
}

TEST(Query, GivesAnEmptyHandleForAnInterfaceThatTheObjectLacks) {
    const Handle<IDispatch> object = MakeMock<TMockFileReference>();
    EXPECT_TRUE(Query<IDocumentReference>(object));
    EXPECT_FALSE(Query<IWebReference>(object));
    EXPECT_THROW(Cast<IWebReference>(object), EConvertError);
    EXPECT_FALSE(Cast<IWebReference>(Handle<IDispatch>()));
}

TEST(Creator, AsksTheProviderOnTheGivenMachineAndReleasesNothingElse) {
    TFakeClasses classes;
    const auto factory = MakeMock<TMockHTMLHelperFactory>();
    classes.Register(CLASS_HTMLHelperFactory, factory);
    EXPECT_EQ(CoHTMLHelperFactory::Create(), factory);
    EXPECT_EQ(CoHTMLHelperFactory::CreateRemote("build7"), factory);
    EXPECT_EQ(classes.Machines, (std::vector<std::string>{"", "build7"}));
}

TEST(Creator, FailsAsTheComponentLayerDoes) {
    try {
        CoRequirementFactory::Create();
        FAIL() << "a class without a provider was started";
    } catch (const EOleSysError& error) {
        EXPECT_NE(std::string(error.what()).find("Class not registered: RequirementFactory"),
                  std::string::npos);
        EXPECT_EQ(error.ErrorCode(), StatusClassNotRegistered);
    }
    TFakeClasses classes;
    const auto wrong = MakeMock<TMockHTMLHelperFactory>();
    classes.Register(CLASS_RequirementFactory, wrong);
    EXPECT_THROW(CoRequirementFactory::Create(), EOleSysError);
}

TEST(CallByName, ReachesTheOperationWithItsArgumentsConverted) {
    const auto server = MakeMock<TMockQuoraneServer>();
    const auto session = MakeMock<TMockSession>();
    EXPECT_CALL(*server, login(std::u16string(u"ben"), std::u16string(u"7"))).WillOnce(Return(session));
    EXPECT_EQ(CallByName(server, "login", {u"ben", 7}).AsDispatch(), session);
}

TEST(CallByName, TellsOverloadsApartByTheNumberOfArguments) {
    const auto requirement = MakeMock<TMockRequirement>();
    std::string comment = "gr\xC3\xBC\xC3\x9F";
    EXPECT_CALL(*requirement, save(std::u16string(u"gr\u00FC\u00DF")));
    EXPECT_CALL(*requirement, save()).Times(1);
    CallByName(requirement, "save", {Variant::TextReference(comment)});
    CallByName(requirement, "save");
}

TEST(CallByName, ReachesPropertiesOfTheParentsInTheRightDirection) {
    const auto value = MakeMock<TMockUDATextValue>();
    const auto requirement = MakeMock<TMockRequirement>();
    std::string blank;
    EXPECT_CALL(*value, Set_Value(std::u16string()));
    EXPECT_CALL(*requirement, Get_Name()).WillOnce(Return(u"Range"));
    PutByName(value, "Value", Variant::TextReference(blank));
    EXPECT_EQ(GetByName(requirement, "Name").AsText(), u"Range");
}

TEST(CallByName, RefusesWhatTheObjectHasNot) {
    const auto requirement = MakeMock<TMockRequirement>();
    EXPECT_THROW(CallByName(requirement, "Save"), EOleSysError);
    EXPECT_THROW(GetByName(requirement, "save"), EOleSysError);
    EXPECT_THROW(CallByName(requirement, "save", {u"", u""}), EOleSysError);
    EXPECT_THROW(CallByName({}, "save"), EOleSysError);
    EXPECT_THROW(PutByName(requirement, "Owner", u"ben"), EConvertError);
    EXPECT_THROW(PutByName(requirement, "Owner", MakeMock<TMockGroup>()), EOleSysError);
}

TEST(CallByName, FillsTheArgumentsThatTheOperationGivesBack) {
    const auto walk = MakeMock<TMockStCollectionEnum>();
    EXPECT_CALL(*walk, Next(1, _, _)).WillOnce([](std::int32_t, Variant& element, std::int32_t& fetched) {
        element = 42;
        fetched = 1;
    });
    std::vector<Variant> arguments(3);
    arguments[0] = 1;
    walk->Invoke("Next", InvokeKind::Method, arguments);
    EXPECT_EQ(arguments[1], Variant(42));
    EXPECT_EQ(arguments[2], Variant(1));
}

} // namespace
