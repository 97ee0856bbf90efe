// The tab with the document references of a requirement: files, web addresses and
// pieces of text. Text and web references can be made and edited here, all kinds
// removed, files and addresses opened.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TAction;
class TActionList;
class TButton;
class TDocRefContainer;
class TImageList;
class TListItem;
class TListView;
class TMemo;
class TPopupMenu;
enum class TItemChange;

class TfraReferences : public TfraBaseRequirementFrame {
public:
    explicit TfraReferences(TWinControl* parent, const std::string& name = "fraReferences");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;
    // Selects the first row as well; the memo and the button to remove follow the rows.
    void EnableDisableControls() override;

    // Fills the list from the requirement's object; no row is selected then.
    void ShowReferences();
    // The memo edits any selected reference but a file's.
    void EnableDisableMemo();
    // Puts a new reference at the end of the requirement's list, under the lock, and
    // gives the memo the focus for its text.
    void addNewDocumentReference(const Quorane_TLB::Handle<Quorane_TLB::IDocumentReference>& reference);

    TButton* btnNewText;
    TButton* btnNewWeb;
    TButton* btnRemove;
    TListView* lstReferences;
    TMemo* mmoReferenceDescription;
    TActionList* ReferencesActionList;
    TAction* actRemove;
    TPopupMenu* ppmReferences;

private:
    void MakeButtons();
    void MakeList();
    void AddRow(const Quorane_TLB::Handle<Quorane_TLB::IDocumentReference>& reference, int position);
    std::string FillRow(TListItem& row,
                        const Quorane_TLB::Handle<Quorane_TLB::IDocumentReference>& reference);
    // The container of the selected row; empty without one.
    TDocRefContainer* SelectedReference() const;
    bool ConfirmRemoval(bool key) const;
    void lstReferencesChange(TListItem& item, TItemChange change);
    void lstReferencesDblClick();
    void mmoReferenceDescriptionChange();
    void btnNewTextClick();
    void btnNewWebClick();
    void actRemoveExecute();
    void actRemoveUpdate();
    void FrameResize();

    TImageList* imlReferences;
};
