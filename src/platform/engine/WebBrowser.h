// The browser control over Qt WebEngine.
#pragma once

#include "platform/engine/HtmlDocument.h"
#include "platform/widgets/Control.h"

#include <QWebEngineProfile>
#include <QWebEngineView>

// The view as a control of the component layer.
class TBrowserControl : public TControlOf<QWebEngineView> {
public:
    using TControlOf::TControlOf;

    // Gives the focus to the control before this one, as Shift+Tab does elsewhere.
    void LeaveBackwards() { focusNextPrevChild(false); }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
};

// To be called once before the first browser control.
void PrepareEngine();

class TWebBrowser : public QObject, public IWebBrowser {
public:
    // The parent owns the control that is made in it. Raises EOleSysError when the
    // engine cannot be started.
    TWebBrowser(TWinControl& parent, const std::string& name);
    ~TWebBrowser() override;

    TWinControl& Control() override;
    void Navigate(const std::string& path) override;
    bool Busy() override;
    THtmlHandle<IHtmlObject> Document() override;
    THtmlHandle<IHtmlObject> Application() override;
    void SetFocus() override;
    std::int64_t EngineCalls() override;

    // For tests, which do not wait as long as users.
    void SetLimits(const TEngineLimits& limits) { FPage->SetLimits(limits); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Loaded();
    void Hear(const QJsonObject& message);
    void TellHover(const QString& address);
    // Call only while there is a document.
    void TellFocus(bool focused);
    void WatchFocus();

    // The page has to go before its profile.
    QWebEngineProfile FProfile;
    std::unique_ptr<TEnginePage> FPage;
    QPointer<TBrowserControl> FControl;
    QPointer<QWidget> FFocusWidget;
    bool FToldFocus = false;
    // The focus was here when the engine's process died.
    bool FTakeFocus = false;
    std::shared_ptr<THtmlDocument> FDocument;
    // The link under the pointer; empty for none.
    QString FHovered;
};
