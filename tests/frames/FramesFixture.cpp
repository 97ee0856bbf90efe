#include "frames/FramesFixture.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;

namespace {

Handle<IStCollection> CopyOf(const Handle<IStCollection>& source) {
    const auto copy = std::make_shared<TListCollection>();
    for (std::int32_t index = 0; index < source->Get_Count(); ++index)
        copy->Add(source->Get_Item(index));
    return copy;
}

} // namespace

TFramesTest::TFramesTest() {
    QuoraneSession = std::make_unique<TQuoraneSession>();
    QuoraneSession->Login("local", "anna", "secret");
    Host.SetBounds(0, 0, 640, 400);
    ON_CALL(*Baseline, Get_Type()).WillByDefault(Return(CurrentBaselineType));
    ON_CALL(*Baseline, Get_TYPE_CURRENT()).WillByDefault(Return(CurrentBaselineType));
    const auto collections = MakeMock<TMockStCollectionFactory>();
    ON_CALL(*collections, CreateByIStCollection(_)).WillByDefault(CopyOf);
    ON_CALL(*collections, Create1()).WillByDefault([] { return std::make_shared<TListCollection>(); });
    Classes.Register(CLASS_CollectionFactory, collections);
    ON_CALL(*Requirement, Get_Baseline()).WillByDefault(Return(Baseline));
}

TFramesTest::~TFramesTest() {
    QuoraneSession.reset();
}

void TFramesTest::InFrozenBaseline() {
    ON_CALL(*Baseline, Get_Type()).WillByDefault(Return(FrozenBaselineType));
}

Handle<IUser> TFramesTest::User(const std::u16string& name) {
    const auto user = MakeMock<TMockUser>();
    ON_CALL(*user, Get_Name()).WillByDefault(Return(name));
    ON_CALL(*user, Get_UserName()).WillByDefault(Return(name));
    return user;
}
