// The bar of formatting controls for the description. It keeps no document of its own:
// each control works on the document of the browser control that it was given, and
// shows what the engine tells of the place of the caret.
#pragma once

#include <cstdint>
#include <string>

#include "contracts/HtmlEngine.h"
#include "platform/widgets/Forms.h"

class TComboBox;
class TfraDescription;
class TImageList;
class TLateBrowser;

enum class TTextAlignment { Left, Right, Center };

class TfraDescriptionToolbar : public TFrame {
public:
    // The images are not owned. The bar is disabled at first.
    TfraDescriptionToolbar(TWinControl* parent, const TImageList& images,
                           const std::string& name = "fraDescriptionToolbar");

    // Not owned; empty for none. It stands in a TfraDescription.
    void SetDHTMLEdit(TLateBrowser* browser) { FDHTMLEdit = browser; }

    // Both are empty without a document.
    THtmlHandle<IHTMLDocument2> DOMInterface() const;
    THtmlHandle<IOleCommandTarget> CommandTarget() const;

    // A formatting property of the selection, by the engine's name of it. Without a
    // document there is nothing to set or get. They raise what the engine raises.
    THtmlValue GetHTMLEditProperty(const std::string& name) const;
    void SetHTMLEditProperty(const std::string& name, const THtmlValue& value);

    // The flags of THtmlCommandFlag; 0 without a document and for a failing engine.
    std::uint32_t GetCommandStatus(std::uint32_t command) const;
    void GetSpecialCommandState(std::uint32_t command, bool& enabled, bool& latched) const;
    // Success without a document.
    THtmlStatus HrExecCommand(std::uint32_t command, const THtmlValue& in, bool prompt);
    THtmlStatus SpecialCommand(std::uint32_t command, bool prompt);

    bool GetBold() const;
    void SetBold(bool bold);
    bool GetItalic() const;
    void SetItalic(bool italic);
    bool GetUnderline() const;
    void SetUnderline(bool underline);
    // Empty where the selection has several.
    std::string GetFontName() const;
    void SetFontName(const std::string& name);
    // From 1 to 7 as HTML counts them; -1 where the selection has several.
    int GetFontSize() const;
    void SetFontSize(int size);
    TTextAlignment GetTextAlignment() const;
    void SetTextAlignment(TTextAlignment alignment);
    bool GetNumberedList() const;
    void SetNumberedList();
    bool GetBulletList() const;
    void SetBulletList();
    void SetTextColor(TColor color);

    // Shows the engine's state in the controls.
    void UpdateDisplay();
    // The bar stays as it is when it is to be disabled while the document or the bar
    // itself has the focus; a key reference's text keeps it disabled in any case.
    void EnableDisable(bool enable);
    // Shift+Tab leads from the document into the bar, and Tab back: the bar is usable as
    // long as the focus stays in one of the two.
    void JoinTabOrder(TWinControl& document);
    void SetDocDirty();
    // The element that holds the start of the selection, or the selected image or
    // table. May be empty.
    THtmlHandle<IHTMLElement> SelectedElement() const;

    TToolBar* tlbDescriptionFormatting;
    TComboBox* cbxFontNames;
    TComboBox* cbxFontSize;
    TToolButton* btnBold;
    TToolButton* btnItalic;
    TToolButton* btnUnderline;
    TToolButton* btnAlignLeft;
    TToolButton* btnCenter;
    TToolButton* btnAlignRight;
    TToolButton* btnNumberedList;
    TToolButton* btnBullets;
    TToolButton* btnForeColor;
    TToolButton* btnInsertTable;
    TToolButton* btnInsertImage;

private:
    void MakeControls(const TImageList& images);
    void BindHandlers();
    void SetupFormattingButtons();
    THtmlHandle<IHTMLRange> SelectedRange() const;
    bool GetFlag(const std::string& name) const;
    void ShowFontSize(int size);
    TfraDescription* Description() const;

    void cbxFontNamesChange();
    void cbxFontNameEntered();
    void cbxFontNameExited();
    void cbxFontSizeChange();
    void cbxFontSizeEntered();
    void cbxFontSizeExited();
    void btnBoldExecute();
    void btnItalicExecute();
    void btnUnderlineExecute();
    void btnAlignLeftExecute();
    void btnCenterExecute();
    void btnAlignRightExecute();
    void btnNumListExecute();
    void btnBulletExecute();
    void btnColorExecute();
    void btnInsertImageClick();

    // Tables
    void btnInsertTableExecute();
    void InsertTable();
    void ChangeSelectedTable();

    TLateBrowser* FDHTMLEdit = nullptr;
    bool FFontNameFocused = false;
    bool FFontSizeFocused = false;
    // What the colour dialog begins with.
    TColor FTextColor = TColor::Rgb(0, 0, 0);
};
