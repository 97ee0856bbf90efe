// The document references of a requirement: listing, editing, adding, removing, opening.
#include <gtest/gtest.h>

#include <QTest>

#include "frames/FramesFixture.h"
#include "frames/UReferencesFrame.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

class ReferencesFrame : public TFramesTest {
protected:
    ReferencesFrame() {
        ON_CALL(*Requirement, Get_DocumentReferences()).WillByDefault([this] { return References; });
        ON_CALL(*Requirement, Set_DocumentReferences(_))
            .WillByDefault([this](const Handle<IStCollection>& references) {
                Log.push_back("write");
                EXPECT_NE(references, References) << "the list read must not be changed in place";
                References = references;
            });
        const auto texts = MakeMock<TMockTextReferenceFactory>();
        ON_CALL(*texts, Create1(_)).WillByDefault([](const std::u16string& text) {
            return Cast<ITextReference>(Text(text));
        });
        Classes.Register(CLASS_TextReferenceFactory, texts);
        const auto addresses = MakeMock<TMockWebReferenceFactory>();
        ON_CALL(*addresses, Create1(_)).WillByDefault([](const std::u16string& text) {
            return Cast<IWebReference>(Web(text));
        });
        Classes.Register(CLASS_WebReferenceFactory, addresses);
    }

    // Each holds the text that is written to it.
    static Handle<IDocumentReference> Text(const std::u16string& text, bool key = false) {
        const auto reference = MakeMock<TMockTextReference>();
        const auto held = std::make_shared<std::u16string>(text);
        ON_CALL(*reference, Get_Text()).WillByDefault([held] { return *held; });
        ON_CALL(*reference, Set_Text(_)).WillByDefault([held](const auto& now) { *held = now; });
        ON_CALL(*reference, Get_IsKey()).WillByDefault(Return(ToWordBool(key)));
        return reference;
    }
    static Handle<IDocumentReference> Web(const std::u16string& url) {
        const auto reference = MakeMock<TMockWebReference>();
        const auto held = std::make_shared<std::u16string>(url);
        ON_CALL(*reference, Get_URL()).WillByDefault([held] { return *held; });
        ON_CALL(*reference, Set_URL(_)).WillByDefault([held](const auto& now) { *held = now; });
        return reference;
    }
    static Handle<IDocumentReference> File(const std::u16string& path, const std::u16string& description) {
        const auto reference = MakeMock<TMockFileReference>();
        ON_CALL(*reference, Get_Path()).WillByDefault(Return(path));
        ON_CALL(*reference, Get_Description()).WillByDefault(Return(description));
        return reference;
    }

    template<class... TReferences> void Show(const TReferences&... references) {
        References = ListOf(references...);
        Fill(Frame);
    }
    std::u16string TextAt(int position) {
        return Cast<ITextReference>(References->Get_Item(position).AsDispatch())->Get_Text();
    }
    std::string Description(int row) { return Frame.lstReferences->Item(row)->SubItem(0); }
    void SelectRow(int row) { Frame.lstReferences->SetSelected(Frame.lstReferences->Item(row)); }
    void TypeInMemo(const std::string& text) { Actor.Type("mmoReferenceDescription", text); }

    Handle<IStCollection> References = ListOf();
    TfraReferences Frame{&Host};
};

TEST_F(ReferencesFrame, EachKindHasItsColumnsAndPicture) {
    Show(Text(u"See chapter 2"), Web(u"https://example.org"), File(u"/tmp/a.txt", u"Drawing"));
    ASSERT_EQ(Frame.lstReferences->ItemCount(), 3);
    const TListItem& file = *Frame.lstReferences->Item(2);
    EXPECT_EQ(Frame.lstReferences->Item(0)->Caption(), "");
    EXPECT_EQ(file.Caption(), "/tmp/a.txt");
    EXPECT_EQ(Description(0), "See chapter 2");
    EXPECT_EQ(Description(1), "https://example.org");
    EXPECT_EQ(Description(2), "Drawing");
    EXPECT_EQ(Frame.lstReferences->Item(0)->ImageIndex(), rfText);
    EXPECT_EQ(Frame.lstReferences->Item(1)->ImageIndex(), rfWeb);
    EXPECT_EQ(file.ImageIndex(), rfFirstFile);
    Show(File(u"/tmp/b.txt", u"Plan"));
    EXPECT_EQ(Frame.lstReferences->Item(0)->ImageIndex(), rfFirstFile) << "old file pictures go";
}

TEST_F(ReferencesFrame, TheFirstRowIsSelectedAndTheMemoFollowsTheKind) {
    Show(Text(u"See chapter 2"), File(u"/tmp/a.txt", u"Drawing"));
    EXPECT_TRUE(Frame.lstReferences->Item(0)->Selected());
    EXPECT_EQ(Frame.mmoReferenceDescription->Text(), "See chapter 2");
    EXPECT_TRUE(Frame.mmoReferenceDescription->Enabled());
    SelectRow(1);
    EXPECT_EQ(Frame.mmoReferenceDescription->Text(), "Drawing");
    EXPECT_FALSE(Frame.mmoReferenceDescription->Enabled());
    EXPECT_TRUE(Log.empty());
}

TEST_F(ReferencesFrame, WithoutReferencesNothingCanBeRemovedOrEdited) {
    Show();
    EXPECT_FALSE(Frame.btnRemove->Enabled());
    EXPECT_FALSE(Frame.actRemove->Enabled());
    EXPECT_FALSE(Frame.mmoReferenceDescription->Enabled());
}

TEST_F(ReferencesFrame, ANewTextIsTheLastRowWithAnEmptyMemoInFocus) {
    Show(Web(u"https://example.org"));
    Actor.Click("btnNewText");
    EXPECT_THAT(Log, ElementsAre("lock", "write"));
    ASSERT_EQ(Frame.lstReferences->ItemCount(), 2);
    EXPECT_TRUE(Frame.lstReferences->Item(1)->Selected());
    EXPECT_EQ(Description(1), " ");
    EXPECT_EQ(Frame.mmoReferenceDescription->Text(), "");
    EXPECT_TRUE(Frame.mmoReferenceDescription->Focused());
}

TEST_F(ReferencesFrame, TypingWritesToTheReferenceAndItsRowUnderTheLock) {
    Show(Text(u"Old"), Web(u"https://example.org"));
    SelectRow(1);
    TypeInMemo("x");
    EXPECT_EQ(Cast<IWebReference>(References->Get_Item(1).AsDispatch())->Get_URL(), u"x");
    EXPECT_EQ(Description(1), "x");
    EXPECT_EQ(Description(0), "Old");
    ASSERT_GE(Log.size(), 2U);
    EXPECT_EQ(Log[0], "lock");
    EXPECT_EQ(Log[1], "write");
}

TEST_F(ReferencesFrame, AnEmptiedMemoStoresOneBlankAndShowsNone) {
    Show(Web(u"x"), Text(u"Other"));
    TypeInMemo("");
    EXPECT_EQ(Description(0), " ");
    EXPECT_EQ(Cast<IWebReference>(References->Get_Item(0).AsDispatch())->Get_URL(), u" ");
    SelectRow(1);
    SelectRow(0);
    EXPECT_EQ(Frame.mmoReferenceDescription->Text(), "");
}

TEST_F(ReferencesFrame, ARefusedLockKeepsTheTextInTheMemoAlone) {
    Show(Text(u"Old"));
    Gate.Refusal = "The object requested is currently locked.";
    Frame.mmoReferenceDescription->SetModified(true);
    TypeInMemo("n");
    EXPECT_EQ(Frame.mmoReferenceDescription->Text(), "n");
    EXPECT_EQ(Description(0), "Old");
    EXPECT_EQ(Cast<ITextReference>(References->Get_Item(0).AsDispatch())->Get_Text(), u"Old");
    EXPECT_FALSE(Dialogs.Errors().empty());
}

TEST_F(ReferencesFrame, RemovingAsksAndTakesTheSelectedPosition) {
    Show(Text(u"One"), Text(u"Two"), Text(u"Three"));
    SelectRow(1);
    Dialogs.Answer(TMessageResult::No);
    Frame.actRemove->Execute();
    EXPECT_EQ(Frame.lstReferences->ItemCount(), 3);
    EXPECT_TRUE(Log.empty());
    Dialogs.Answer(TMessageResult::Yes);
    Frame.actRemove->Execute();
    ASSERT_EQ(Frame.lstReferences->ItemCount(), 2);
    EXPECT_EQ(Description(1), "Three");
    EXPECT_THAT(Log, ElementsAre("lock", "write"));
    EXPECT_EQ(Dialogs.Messages().back().Text, "Are you sure you want to remove selected reference?");
    EXPECT_EQ(Gate.DescriptionUpdates, 0);
    SelectRow(1);
    TypeInMemo("x");
    EXPECT_EQ(TextAt(1), u"x") << "the rows left stand at new positions";
    EXPECT_EQ(TextAt(0), u"One");
    Dialogs.Answer(TMessageResult::Yes);
    Frame.actRemove->Execute();
    EXPECT_EQ(TextAt(0), u"One");
    EXPECT_EQ(References->Get_Count(), 1);
}

TEST_F(ReferencesFrame, RemovingTheKeyReferenceAsksMoreAndReloadsTheDescription) {
    Show(Text(u"One"), Text(u"Key", true));
    EXPECT_EQ(Frame.lstReferences->Item(1)->StateIndex(), rfKey);
    EXPECT_EQ(Frame.lstReferences->Item(0)->StateIndex(), -1);
    SelectRow(1);
    Dialogs.Answer(TMessageResult::Yes);
    Frame.actRemove->Execute();
    EXPECT_EQ(Dialogs.Messages().back().Text,
              "The selected reference is a key reference. Are you sure you want to delete it?");
    EXPECT_EQ(Dialogs.Messages().back().Icon, TMessageIcon::Warning);
    EXPECT_EQ(Gate.DescriptionUpdates, 1);
    Show(Text(u"Key", true), Text(u"Two"));
    Gate.UpdateFailure = "No space left on device";
    Dialogs.Answer(TMessageResult::Yes);
    Frame.actRemove->Execute();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre("No space left on device"));
    EXPECT_EQ(Description(0), "Two") << "the rows left stand at new positions";
}

TEST_F(ReferencesFrame, ADoubleClickOpensAddressesAndFilesOnly) {
    Show(Text(u"One"), Web(u"https://example.org"), File(u"/tmp/a.txt", u"Drawing"));
    for (int row = 0; row < 3; ++row) {
        TListView& list = *Frame.lstReferences;
        const QPoint middle = list.visualItemRect(list.Item(row)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middle);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, middle);
    }
    EXPECT_THAT(System.Opened, ElementsAre("https://example.org", "/tmp/a.txt"));
}

TEST_F(ReferencesFrame, InAFrozenBaselineMemoAndRemovalStillFollowTheRows) {
    InFrozenBaseline();
    Show(Text(u"One"));
    EXPECT_FALSE(Frame.lstReferences->Enabled());
    EXPECT_FALSE(Frame.btnNewText->Enabled());
    EXPECT_TRUE(Frame.mmoReferenceDescription->Enabled());
    EXPECT_TRUE(Frame.btnRemove->Enabled());
}

} // namespace
