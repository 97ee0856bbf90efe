// The panel with the real HTML engine behind its description, and the hands of a user
// on the document.
#pragma once

#include <QTest>

#include "description/UDescriptionToolbarFrame.h"
#include "engine/EngineFixture.h"
#include "panel/PanelTest.h"
#include "platform/engine/WebBrowser.h"

// Has a key reference.
inline const std::vector<std::string> GuardAgainstFrost{
    "System Requirement", "Never let the home or its people come to harm", "Guard against frost"};

class TDescriptionTest : public TPanelTest {
protected:
    TDescriptionTest();
    ~TDescriptionTest() override;

    static bool WaitUntil(const std::function<bool()>& condition) {
        return TEngineFixture::WaitUntil(condition);
    }
    TfraDescription& Frame() { return *Panel().fraDescription; }
    TfraDescriptionToolbar& Bar() { return *Panel().fraDescriptionToolbar; }
    bool BarEnabled() { return Bar().tlbDescriptionFormatting->Enabled(); }
    template<class T> std::shared_ptr<T> Document() {
        return std::dynamic_pointer_cast<T>(Frame().wbrReqDescription->Document());
    }
    // The document as the page has it; empty without one.
    std::string Html();
    bool WaitForHtml(const std::string& part);
    // What the page really paints: the widths of the pictures in their order.
    bool ShowsPictures(const QString& widths);
    std::string DescriptionOnServer(std::int32_t number);
    // Has another user change a requirement and save it.
    void ChangeAsBen(std::int32_t number, const std::function<void(const TReq&)>& change);
    void DescribeAsBen(std::int32_t number, const std::u16string& html);
    // Puts in what the service would refuse. Who has logged on may have read before.
    void RunInStore(const std::string& statements);

    // The widget that takes the document's keys.
    QWidget& Page();
    // A click beside the text of the first line, which leaves the caret at its end.
    void ClickIntoText();
    void TypeIntoPage(const std::string& text);
    void KeyIntoPage(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void SelectAllText();
    // Until the first change of the description has become an edit.
    bool WaitForLock();
    // Saves the change once it is one.
    void Save();
    bool Locked();
};
