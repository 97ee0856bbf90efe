#include "hosts/studio/DockServices.h"

#include "contracts/Exceptions.h"
#include "hosts/studio/StudioWindow.h"
#include "platform/widgets/Forms.h"
#include "platform/widgets/QtText.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QPointer>

namespace {

// A dock widget that tells when it comes up or goes as a whole. Qt's own visibility
// signal also fires when another tab of the area covers it, and it hides for a moment
// while it is torn off; so what counts is the state once a call or event has ended.
class TDockWidget : public QDockWidget {
public:
    TDockWidget(TForm& form, IDockEvents& events, QWidget* parent)
        : QDockWidget(ToQt(form.Caption()), parent)
        , FEvents(events) {
        setObjectName(ToQt(form.Name()));
        setWidget(&form);
    }

    // From now on changes are told.
    void StartTelling() { FTelling = true; }
    void StopTelling() { FTelling = false; }

    void Tell() {
        const bool shown = !isHidden();
        if (!FTelling || shown == FShown) return;
        FShown = shown;
        Application().Dispatch(nullptr,
                               [this, shown] { shown ? FEvents.DockShown() : FEvents.DockHidden(); });
    }

protected:
    bool event(QEvent* event) override {
        const bool handled = QDockWidget::event(event);
        if (event->type() == QEvent::HideToParent && std::exchange(FClosing, false))
            Tell();
        else if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            QMetaObject::invokeMethod(
                this, [this] { Tell(); }, Qt::QueuedConnection);
        return handled;
    }
    void closeEvent(QCloseEvent* event) override {
        QDockWidget::closeEvent(event);
        FClosing = event->isAccepted();
    }

private:
    IDockEvents& FEvents;
    bool FShown = false;
    bool FTelling = false;
    // Between the user's closing and the hiding that follows it.
    bool FClosing = false;
};

class TDockSite : public IDockSite {
public:
    TDockSite(TStudioWindow& window, TForm& form, IDockEvents& events)
        : FWindow(&window)
        , FForm(form)
        , FDock(new TDockWidget(form, events, &window)) {
        window.AddDock(*FDock);
        FDock->hide();
        FDock->StartTelling();
    }

    ~TDockSite() override {
        if (!FDock) return;
        FDock->StopTelling();
        // The form is its owner's and must not go with the dock.
        FForm.setParent(nullptr);
        delete FDock.data();
    }

    // The layout of the whole window holds the form's place, floating state and size
    // under the form's name, and the window has put the dock there when it was added.
    void LoadWindowState(IDesktopStore&, const std::string&) override {}

    void SaveWindowState(IDesktopStore& store, const std::string&, bool) override {
        if (FDock && FWindow) FWindow->SaveLayout(store);
    }

    void ForceShow() override {
        SetFloating(false);
        Show();
    }
    void Show() override {
        if (!FDock || !FWindow) return;
        FWindow->ShowDock(*FDock);
        FDock->Tell();
    }
    void Hide() override {
        if (!FDock) return;
        FDock->hide();
        FDock->Tell();
    }
    bool IsVisible() const override { return FDock && !FDock->isHidden(); }
    bool IsFloating() const override { return FDock && FDock->isFloating(); }
    void SetFloating(bool floating) override {
        if (FDock) FDock->setFloating(floating);
    }

private:
    QPointer<TStudioWindow> FWindow;
    TForm& FForm;
    QPointer<TDockWidget> FDock;
};

} // namespace

std::unique_ptr<IDockSite> TDockServices::AddDockableForm(TForm& form, IDockEvents& events) {
    if (!FWindow) throw Exception("The main form does not exist yet.");
    return std::make_unique<TDockSite>(*FWindow, form, events);
}

void TDockServices::FocusWindow(TForm& form) {
    auto* dock = qobject_cast<QDockWidget*>(form.parentWidget());
    if (!dock) return;
    dock->raise();
    form.window()->activateWindow();
    form.setFocus();
}

IDesktopStore& TDockServices::IDEIniFile() {
    return FStore;
}

void TDockServices::RegisterDesktopFormClass(const std::string& className, const std::string& section,
                                             const std::string&) {
    FFormClasses[className] = section;
}
