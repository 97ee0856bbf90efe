// A tab of the editor area whose body takes an add-in's widgets.
#pragma once

#include "contracts/EditorServices.h"
#include "platform/widgets/Forms.h"

#include <QPointer>

class TEditorArea;

class TTabFrame : public IHostTabFrame, public std::enable_shared_from_this<TTabFrame> {
public:
    explicit TTabFrame(TEditorArea& area);
    ~TTabFrame() override;

    TFrame& Body() override;
    void SetCaption(const std::string& caption) override;
    void SetTitle(const std::string& title) override;
    void SetIcon(const std::string& iconName) override;
    void SetHelpKeyword(const std::string& keyword) override;
    void Show() override;
    bool Close() override;

    QWidget* Page() const { return FPage; }
    // At once, where closing waits for the event that closes to end.
    void DestroyPage();
    const QString& Caption() const { return FCaption; }
    const QString& Title() const { return FTitle; }
    QIcon Icon() const;

private:
    void RequireBody() const;

    QPointer<TEditorArea> FArea;
    // The area's tab widget owns the page; it goes when the tab is closed.
    QPointer<TFrame> FPage;
    QString FCaption;
    QString FTitle;
    std::string FIconName;
    bool FClosing = false;
};
