// Windows, frames inside windows, and owners without a window.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QObject>
#include <QWidget>

#include "contracts/DockServices.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Control.h"

class QEventLoop;

enum class TBorderStyle { Sizeable, Dialog, Hint };

// A window. It stands centred on its owner's screen when it first shows, and asks for
// at least the room that its content needs.
class TForm : public TControlOf<QWidget> {
public:
    // Owner: the window it belongs to; may be empty.
    explicit TForm(TWinControl* owner, const std::string& name = {});
    ~TForm() override;

    TEvent<> OnShow;
    // By the user or by the program; not when another window covers it.
    TEvent<> OnHide;

    std::string Caption() const;
    void SetCaption(const std::string& caption);
    // A dialog has a fixed size and no more border icons than closing needs. A hint has
    // no border, never takes the focus, and keeps the bounds that the program gives it.
    void SetBorderStyle(TBorderStyle style);
    // By its name in the icon sheets.
    void SetIcon(const std::string& iconName);
    // What has the focus when the form comes up.
    void SetActiveControl(TWinControl& control) { FActiveControl = &control; }

    // Shows the form and waits in a loop of its own until its result is set or it is
    // closed, which counts as Cancel. Re-enters the message loop. The form stays its
    // owner's.
    TModalResult ShowModal();
    TModalResult ModalResult() const { return FModalResult; }
    // Any result but None ends ShowModal.
    void SetModalResult(TModalResult result);
    void Close();

    // Presses Enter's and Escape's buttons as the keys do; false when there is none.
    bool ClickDefault();
    bool ClickCancel();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // For forms whose place is a host's: true keeps show and hide from OnShow and OnHide.
    virtual bool HostTellsVisibility() const { return false; }

private:
    void Centre();
    void RunModalHook();
    TWinControl* FActiveControl = nullptr;
    QEventLoop* FLoop = nullptr;
    TModalResult FModalResult = TModalResult::None;
    bool FPlaced = false;
};

// A form that stands in a dock area of the host. The host's services give it its
// place when FormCreate runs; without a host it is a window of its own.
class TDockableForm : public TForm, private IDockEvents {
public:
    explicit TDockableForm(const std::string& name);
    ~TDockableForm() override;

    // Takes the place in the host, hidden. Once, after the form has name and caption.
    virtual void FormCreate();
    // Saves the state if AutoSave is on and gives the place back.
    virtual void FormDestroy();

    // The section of the desktop store; the form's name at first.
    std::string DesktopSection() const { return FSection; }
    void SetDesktopSection(const std::string& section) { FSection = section; }
    bool AutoSave() const { return FAutoSave; }
    void SetAutoSave(bool autoSave) { FAutoSave = autoSave; }
    void LoadWindowState(IDesktopStore& store);
    void SaveWindowState(IDesktopStore& store, bool wholeDesktop);

    // Docked and in front, whatever it was before.
    void ForceShow();
    bool Floating() const;
    // As a window's: the place in the host shows and hides with the form.
    void ShowForm();
    void HideForm();
    bool FormVisible() const;

protected:
    bool HostTellsVisibility() const override { return FSite != nullptr; }

private:
    void DockShown() override;
    void DockHidden() override;
    std::unique_ptr<IDockSite> FSite;
    std::string FSection;
    bool FAutoSave = false;
};

// A part of a form with controls of its own.
class TFrame : public TControlOf<QWidget> {
public:
    explicit TFrame(TWinControl* parent, const std::string& name = {});
    // All controls that take input, at any depth, in the order of creation: labels,
    // panels and other mere holders are not among them.
    std::vector<TWinControl*> InputControls();
};

// An owner of components that has no window.
class TDataModule : public QObject, public TComponent {
public:
    explicit TDataModule(TComponent* owner, const std::string& name = {});
    QObject& Object() override { return *this; }
    using TComponent::Object;
};
