#include "frames/UReferencesFrame.h"

#include "contracts/Exceptions.h"
#include "contracts/SystemServices.h"
#include "frames/URequirementPanel.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr int ColumnWidth = 150;
constexpr int IconSize = 16;
// Stands for no text; the memo never shows it.
constexpr char NoText[] = " ";
constexpr char16_t NewReferenceText[] = u" ";

Handle<IStCollection> CopyOfReferences(const Handle<IRequirement>& requirement) {
    return CoCollectionFactory::Create()->CreateByIStCollection(requirement->Get_DocumentReferences());
}

int AddFileIcon(TImageList& images, const std::string& path) {
    const TPixels icon = SystemServices().FileIcon(path, IconSize);
    return images.AddRgba(icon.Width, icon.Height, icon.Bytes);
}

void SetReferenceText(const Handle<IDispatch>& reference, const std::string& text) {
    if (const auto web = Query<IWebReference>(reference))
        web->Set_URL(Wide(text));
    else if (const auto piece = Query<ITextReference>(reference))
        piece->Set_Text(Wide(text));
    else
        throw Exception(SMemoForTextAndWebOnly);
}

} // namespace

TfraReferences::TfraReferences(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name)
    , imlReferences(new TImageList(this, "imlReferences")) {
    FillReferenceImages(*imlReferences);
    MakeButtons();
    MakeList();
    mmoReferenceDescription = new TMemo(this, "mmoReferenceDescription");
    mmoReferenceDescription->SetAccessibleName(SReferenceText);
    mmoReferenceDescription->SetEnabled(false);
    mmoReferenceDescription->OnChange = [this] { mmoReferenceDescriptionChange(); };
    OnResize = [this] { FrameResize(); };
}

void TfraReferences::MakeButtons() {
    ReferencesActionList = new TActionList(*this, "ReferencesActionList");
    actRemove = new TAction(*ReferencesActionList, "actRemove");
    actRemove->SetCaption(SRemoveReference);
    actRemove->SetHint(SRemoveReferenceHint);
    actRemove->OnExecute = [this] { actRemoveExecute(); };
    actRemove->OnUpdate = [this] { actRemoveUpdate(); };
    btnNewText = new TButton(this, "btnNewText", SNewTextReference);
    btnNewText->OnClick = [this] { btnNewTextClick(); };
    btnNewWeb = new TButton(this, "btnNewWeb", SNewWebReference);
    btnNewWeb->OnClick = [this] { btnNewWebClick(); };
    btnRemove = new TButton(this, "btnRemove");
    btnRemove->SetAction(*actRemove);
}

void TfraReferences::MakeList() {
    lstReferences = new TListView(this, "lstReferences");
    lstReferences->SetAccessibleName(SReferences);
    lstReferences->AddColumn(SReferenceFile, ColumnWidth);
    lstReferences->AddColumn(SReferenceDescription, ColumnWidth);
    lstReferences->SetSmallImages(imlReferences);
    lstReferences->SetStateImages(imlReferences);
    ppmReferences = new TPopupMenu(this, "ppmReferences");
    ppmReferences->Add("RemoveMenuItem", *actRemove);
    lstReferences->SetPopupMenu(ppmReferences);
    lstReferences->OnChange = [this](TListItem& item, TItemChange change) {
        lstReferencesChange(item, change);
    };
    lstReferences->OnDblClick = [this] { lstReferencesDblClick(); };
}

void TfraReferences::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    ShowReferences();
    EnableDisableControls();
}

void TfraReferences::ShowReferences() {
    mmoReferenceDescription->Clear();
    ClearListView(*lstReferences);
    imlReferences->Truncate(rfFirstFile);
    lstReferences->Repaint();
    if (GetRequirement()) {
        const auto references =
            EnumerableStCollection(GetRequirement()->Get_DocumentReferences())->GetEnumerator();
        for (int position = 0; references->MoveNext(); ++position)
            AddRow(Cast<IDocumentReference>(references->GetCurrent()), position);
    }
    lstReferences->Repaint();
}

void TfraReferences::AddRow(const Handle<IDocumentReference>& reference, int position) {
    TListItem& row = lstReferences->AddItem();
    const std::string text = FillRow(row, reference);
    row.SetData(std::make_unique<TDocRefContainer>(reference, text, position));
    row.SetStateIndex(reference->Get_IsKey() != WordFalse ? rfKey : -1);
}

// Gives the text that the memo shows for the row.
std::string TfraReferences::FillRow(TListItem& row, const Handle<IDocumentReference>& reference) {
    std::string text;
    if (const auto file = Query<IFileReference>(reference)) {
        const std::string path = Utf8(file->Get_Path());
        text = Utf8(file->Get_Description());
        row.SetCaption(path);
        row.SetImageIndex(AddFileIcon(*imlReferences, path));
    } else if (const auto web = Query<IWebReference>(reference)) {
        text = Utf8(web->Get_URL());
        row.SetImageIndex(rfWeb);
    } else if (const auto piece = Query<ITextReference>(reference)) {
        text = Utf8(piece->Get_Text());
        row.SetImageIndex(rfText);
    } else {
        return text;
    }
    row.AddSubItem(text);
    return text;
}

void TfraReferences::EnableDisableControls() {
    TfraBaseRequirementFrame::EnableDisableControls();
    TListItem* first = lstReferences->Item(0);
    if (first) first->SetSelected(true);
    btnRemove->SetEnabled(first != nullptr);
    EnableDisableMemo();
}

void TfraReferences::EnableDisableMemo() {
    const TDocRefContainer* selected = SelectedReference();
    mmoReferenceDescription->SetEnabled(selected && !Query<IFileReference>(selected->Reference));
}

TDocRefContainer* TfraReferences::SelectedReference() const {
    const TListItem* row = lstReferences->Selected();
    return row ? row->DataAs<TDocRefContainer>() : nullptr;
}

void TfraReferences::lstReferencesChange(TListItem& item, TItemChange change) {
    GuardServerCalls([&] {
        // The rows are going away.
        if (lstReferences->Tag() == 1) return;
        if (change == TItemChange::State) {
            const auto* reference = item.DataAs<TDocRefContainer>();
            const bool shown = item.Selected() && reference && reference->Text != NoText;
            mmoReferenceDescription->SetText(shown ? reference->Text : std::string());
        }
        EnableDisableMemo();
    });
}

void TfraReferences::lstReferencesDblClick() {
    GuardServerCalls([this] {
        const TDocRefContainer* selected = SelectedReference();
        if (!selected) return;
        if (const auto web = Query<IWebReference>(selected->Reference))
            SystemServices().ShellOpen(Utf8(web->Get_URL()));
        else if (const auto file = Query<IFileReference>(selected->Reference))
            SystemServices().ShellOpen(Utf8(file->Get_Path()));
    });
}

void TfraReferences::actRemoveUpdate() {
    actRemove->SetEnabled(lstReferences->Selected() != nullptr);
}

bool TfraReferences::ConfirmRemoval(bool key) const {
    return Application().MessageBox(key ? SRemoveKeyReferenceQuestion : SRemoveReferenceQuestion,
                                    SMessageCaption, key ? TMessageIcon::Warning : TMessageIcon::Question,
                                    TMessageButtons::YesNo) == TMessageResult::Yes;
}

void TfraReferences::actRemoveExecute() {
    GuardServerCalls([this] {
        const TDocRefContainer* selected = SelectedReference();
        if (!selected) return;
        // The row may go away while the question is up.
        const Handle<IDocumentReference> reference = selected->Reference;
        const std::int32_t position = selected->Position;
        if (!ConfirmRemoval(reference->Get_IsKey() != WordFalse)) return;
        const Handle<IStCollection> references = CopyOfReferences(GetRequirement());
        GUIHelpers->LockCurrentRequirement();
        references->Remove(position);
        GetRequirement()->Set_DocumentReferences(references);
        const auto refill = [this] {
            ShowReferences();
            EnableDisableControls();
        };
        try {
            if (reference->Get_IsKey() != WordFalse) GUIHelpers->UpdateDescription();
        } catch (...) {
            // The rows that are left stand at other positions now.
            refill();
            throw;
        }
        refill();
    });
}

void TfraReferences::btnNewTextClick() {
    GuardServerCalls(
        [this] { addNewDocumentReference(CoTextReferenceFactory::Create()->Create1(NewReferenceText)); });
}

void TfraReferences::btnNewWebClick() {
    GuardServerCalls(
        [this] { addNewDocumentReference(CoWebReferenceFactory::Create()->Create1(NewReferenceText)); });
}

void TfraReferences::addNewDocumentReference(const Handle<IDocumentReference>& reference) {
    GuardServerCalls([&] {
        const Handle<IStCollection> references = CopyOfReferences(GetRequirement());
        GUIHelpers->LockCurrentRequirement();
        references->Add(reference);
        GetRequirement()->Set_DocumentReferences(references);
        ShowReferences();
        EnableDisableControls();
        TListItem* last = lstReferences->Item(lstReferences->ItemCount() - 1);
        if (!last) return;
        last->SetSelected(true);
        last->MakeVisible();
        mmoReferenceDescription->SetFocus();
    });
}

void TfraReferences::mmoReferenceDescriptionChange() {
    GuardServerCalls([this] {
        // A fill is no edit.
        if (!mmoReferenceDescription->Modified()) return;
        GUIHelpers->LockCurrentRequirement();
        TListItem* row = lstReferences->Selected();
        if (!row) return;
        auto& container = *row->DataAs<TDocRefContainer>();
        const Handle<IStCollection> references = CopyOfReferences(GetRequirement());
        const std::string text = mmoReferenceDescription->Empty() ? NoText : mmoReferenceDescription->Text();
        SetReferenceText(references->Get_Item(container.Position).AsDispatch(), text);
        row->SetSubItem(0, text);
        container.Text = text;
        GetRequirement()->Set_DocumentReferences(references);
    });
}

void TfraReferences::FrameResize() {
    int left = FrameMargin;
    for (TButton* button : {btnNewText, btnNewWeb, btnRemove}) {
        button->SetLeft(left);
        button->SetTop(FrameMargin);
        left += button->Width() + ButtonGap;
    }
    const int width = ClientWidth() - 2 * FrameMargin;
    lstReferences->SetLeft(FrameMargin);
    lstReferences->SetTop(btnRemove->Top() + btnRemove->Height() + FrameMargin);
    lstReferences->SetWidth(width);
    mmoReferenceDescription->SetLeft(FrameMargin);
    mmoReferenceDescription->SetWidth(width);
    GUIHelpers->ResizeEqually(*lstReferences, *mmoReferenceDescription, StackGap);
}
