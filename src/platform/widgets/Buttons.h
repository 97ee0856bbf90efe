// Push buttons and tool bars.
#pragma once

#include <memory>
#include <string>

#include <QFrame>
#include <QPushButton>
#include <QToolButton>

#include "platform/widgets/Actions.h"
#include "platform/widgets/Control.h"

class TImageList;
class TPopupMenu;

enum class TModalResult { None, Ok, Cancel };

class TButton : public TControlOf<QPushButton> {
public:
    explicit TButton(TWinControl* parent, const std::string& name = {}, const std::string& caption = {});
    ~TButton() override;
    TEvent<> OnClick;

    std::string Caption() const;
    void SetCaption(const std::string& caption);
    // Shows and runs the action; its caption, hint and states become the button's.
    void SetAction(TAction& action);
    // Enter presses the default button of a form, Escape the cancel button.
    void SetDefault(bool isDefault);
    bool Default() const { return FDefault; }
    void SetCancel(bool isCancel) { FCancel = isCancel; }
    bool Cancel() const { return FCancel; }
    // A click sets this as the form's result after OnClick, which closes a modal form.
    void SetModalResult(TModalResult result) { FModalResult = result; }
    // As a click of the user does. Nothing happens while it is disabled.
    void Click();

private:
    void Clicked();
    TAction* FAction = nullptr;
    TModalResult FModalResult = TModalResult::None;
    bool FDefault = false;
    bool FCancel = false;
};

enum class TToolButtonStyle { Button, Check, DropDown };

// A button of a tool bar, with a picture of the bar's images.
class TToolButton : public TControlOf<QToolButton> {
public:
    explicit TToolButton(TWinControl* parent, const std::string& name = {});
    ~TToolButton() override;
    TEvent<> OnClick;

    void SetAction(TAction& action);
    TAction* Action() const { return FAction; }
    void SetStyle(TToolButtonStyle style);
    int ImageIndex() const { return FImageIndex; }
    void SetImageIndex(int index);
    // Whether a check button is pressed. Setting it fires nothing.
    bool Down() const { return isChecked(); }
    void SetDown(bool down);
    // The menu of a drop-down button; not owned.
    void SetDropDownMenu(TPopupMenu& menu);
    void SetCaption(const std::string& caption);
    void Click();

private:
    TAction* FAction = nullptr;
    int FImageIndex = -1;
};

class TToolSeparator : public TControlOf<QFrame> {
public:
    explicit TToolSeparator(TWinControl* parent, const std::string& name = {});
};

// Buttons and other controls in a row that wraps when the bar is narrow.
class TToolBar : public TControlOf<QWidget> {
public:
    explicit TToolBar(TWinControl* parent, const std::string& name = {});
    // Not owned; to be set before the buttons are made.
    void SetImages(const TImageList* images) { FImages = images; }
    const TImageList* Images() const { return FImages; }

    TToolButton& AddButton(const std::string& name, TAction& action);
    TToolButton& AddButton(const std::string& name, int imageIndex, const std::string& hint,
                           TToolButtonStyle style = TToolButtonStyle::Button);
    TToolSeparator& AddSeparator(const std::string& name = {});

private:
    const TImageList* FImages = nullptr;
};
