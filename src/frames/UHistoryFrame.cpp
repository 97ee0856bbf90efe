#include "frames/UHistoryFrame.h"

#include "contracts/SystemServices.h"
#include "frames/URequirementPanel.h"
#include "platform/widgets/tree/ListView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

// The attribute whose values are HTML.
constexpr char16_t DescriptionAttribute[] = u"Description";

std::string OnOneLine(std::u16string_view text) {
    std::u16string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool lineEnd = text.substr(at, 2) == u"\r\n";
        line += lineEnd ? u' ' : text[at];
        if (lineEnd) ++at;
    }
    return Utf8(line);
}

std::string ValueText(const Handle<IHistoryChange>& change, const Variant& value,
                      const Handle<IHTMLHelper>& html) {
    const std::string text = TQuoraneHelpers::VariantToStr(value);
    if (change->Get_AttributeName() != DescriptionAttribute) return text;
    return OnOneLine(html->htmlToPlainText(Wide(text)));
}

} // namespace

TfraHistory::TfraHistory(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name) {
    lstHistory = new TListView(this, "lstHistory");
    lstHistory->SetAccessibleName(SHistoryRevisions);
    lstHistory->AddColumn(SHistoryRevision, 50);
    lstHistory->AddColumn(SHistoryDate, 150);
    lstHistory->AddColumn(SHistoryChangedBy, 100);
    lstHistory->AddColumn(SHistoryComment, 400);
    lstChanges = new TListView(this, "lstChanges");
    lstChanges->SetAccessibleName(SHistoryChanges);
    lstChanges->AddColumn(SHistoryAttribute, 150);
    lstChanges->AddColumn(SHistoryChangedFrom, 200);
    lstChanges->AddColumn(SHistoryChangedTo, 200);
    lstHistory->OnSelectItem = [this](TListItem& item, bool selected) {
        lstHistorySelectItem(item, selected);
    };
    OnResize = [this] { FrameResize(); };
}

void TfraHistory::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    ShowHistory();
    EnableDisableControls();
}

void TfraHistory::ShowHistory() {
    ClearListView(*lstHistory);
    ClearListView(*lstChanges);
    if (!GetRequirement()) return;
    const auto revisions =
        EnumerableStCollection(GetRequirement()->Get_History()->Get_Revisions())->GetEnumerator();
    while (revisions->MoveNext())
        AddRevision(Cast<IHistoryRevision>(revisions->GetCurrent()));
    if (TListItem* first = lstHistory->Item(0)) first->SetSelected(true);
}

void TfraHistory::AddRevision(const Handle<IHistoryRevision>& revision) {
    TListItem& row = lstHistory->AddItem();
    row.SetData(std::make_unique<THistoryRevisionContainer>(revision));
    const Handle<IVersion> version = revision->Get_Version();
    row.SetCaption(std::to_string(version->Get_MajorVersion()) + "." +
                   std::to_string(version->Get_MinorVersion()));
    row.AddSubItem(SystemServices().DateTimeText(revision->Get_Date()));
    row.AddSubItem(Utf8(revision->Get_UserName()));
    row.AddSubItem(Utf8(revision->Get_Comment()));
}

void TfraHistory::lstHistorySelectItem(TListItem& item, bool selected) {
    GuardServerCalls([&] {
        if (!selected) return;
        ClearListView(*lstChanges);
        const Handle<IHistoryRevision> revision = item.DataAs<THistoryRevisionContainer>()->Revision;
        const auto changes = EnumerableStCollection(revision->Get_Changes())->GetEnumerator();
        while (changes->MoveNext())
            AddChange(Cast<IHistoryChange>(changes->GetCurrent()));
    });
}

void TfraHistory::AddChange(const Handle<IHistoryChange>& change) {
    // A change that can't be read drops out, so that the rest of the revision shows.
    TListItem& row = lstChanges->AddItem();
    try {
        row.SetCaption(Utf8(change->Get_AttributeName()));
    } catch (const std::exception&) {
        row.Delete();
        return;
    }
    const Handle<IHTMLHelper> html = CoHTMLHelperFactory::Create()->Create1();
    try {
        row.AddSubItem(ValueText(change, change->Get_OldValue(), html));
        row.AddSubItem(ValueText(change, change->Get_NewValue(), html));
    } catch (const std::exception&) {
        row.Delete();
    }
}

void TfraHistory::FrameResize() {
    const int width = ClientWidth() - 2 * FrameMargin;
    lstHistory->SetBounds(FrameMargin, FrameMargin, width, lstHistory->Height());
    lstChanges->SetLeft(FrameMargin);
    lstChanges->SetWidth(width);
    GUIHelpers->ResizeEqually(*lstHistory, *lstChanges, StackGap);
}
