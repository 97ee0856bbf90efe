#include "EngineFixture.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <csignal>

TEngineFixture::TEngineFixture() {
    FForm.SetBounds(0, 0, 640, 480);
    FForm.show();
}

bool TEngineFixture::WaitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(20'000);
    QTimer wake;
    wake.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void TEngineFixture::Load(const std::string& html) {
    WriteFile(FFolder.File("description.html"), "\xEF\xBB\xBF" + html);
    FBrowser.Navigate(FFolder.File("description.html"));
    ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Busy(); }));
}

void TEngineFixture::Edit(const std::string& html) {
    Load(html);
    ASSERT_NE(FBrowser.Document(), nullptr);
    Document<IHTMLDocument2>()->put_designMode("On");
    FForm.activateWindow();
    FBrowser.SetFocus();
}

std::string TEngineFixture::Html() {
    const auto element = Document<IHTMLDocument3>()->get_documentElement();
    return QString::fromStdU16String(element->get_outerHTML()).toStdString();
}

THtmlHandle<IHTMLTxtRange> TEngineFixture::TextRange() {
    const auto selection = Document<IHTMLDocument2>()->get_selection();
    return std::dynamic_pointer_cast<IHTMLTxtRange>(selection->createRange());
}

void TEngineFixture::Type(const std::string& text) {
    QTest::keyClicks(&KeyTarget(), QString::fromStdString(text));
}

void TEngineFixture::Click(int x, int y) {
    QTest::mouseClick(&KeyTarget(), Qt::LeftButton, {}, {x, y});
}

void TEngineFixture::SelectAll() {
    static_cast<TBrowserControl&>(FBrowser.Control()).page()->triggerAction(QWebEnginePage::SelectAll);
    const auto selection = Document<IHTMLDocument2>()->get_selection();
    ASSERT_TRUE(WaitUntil([&] { return selection->get_type() == "Text"; }));
}

void TEngineFixture::SignalEngine(int signal) {
    const auto pid = static_cast<TBrowserControl&>(FBrowser.Control()).page()->renderProcessPid();
    ASSERT_GT(pid, 0);
    ASSERT_EQ(::kill(static_cast<pid_t>(pid), signal), 0);
}
