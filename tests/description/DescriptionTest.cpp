#include "description/DescriptionTest.h"

#include <QWebEngineScript>

#include "backend/store/Database.h"
#include "platform/widgets/QtText.h"

TDescriptionTest::TDescriptionTest() {
    SetHtmlEngineFactory([](TWinControl& parent, const std::string& name) {
        PrepareEngine();
        return std::make_unique<TWebBrowser>(parent, name);
    });
}

TDescriptionTest::~TDescriptionTest() {
    SetHtmlEngineFactory({});
}

std::string TDescriptionTest::Html() {
    const auto document = Document<IHTMLDocument3>();
    const auto element = document ? document->get_documentElement() : nullptr;
    return element ? Quorane_TLB::Utf8(element->get_outerHTML()) : std::string();
}

bool TDescriptionTest::WaitForHtml(const std::string& part) {
    return WaitUntil([&] { return Html().find(part) != std::string::npos; });
}

bool TDescriptionTest::ShowsPictures(const QString& widths) {
    // The last answers may come when nobody waits any more.
    const auto shown = std::make_shared<QString>();
    auto& page = *static_cast<TBrowserControl&>(Frame().wbrReqDescription->Control()).page();
    return WaitUntil([&] {
        page.runJavaScript(QStringLiteral("Array.from(document.images, each => each.naturalWidth).join()"),
                           QWebEngineScript::ApplicationWorld,
                           [shown](const QVariant& answer) { *shown = answer.toString(); });
        return *shown == widths;
    });
}

std::string TDescriptionTest::DescriptionOnServer(std::int32_t number) {
    return Quorane_TLB::Utf8(ReadAs("admin", number)->Get_Description()->Get_Text());
}

void TDescriptionTest::ChangeAsBen(std::int32_t number, const std::function<void(const TReq&)>& change) {
    const TReq requirement = ReadAs("ben", number);
    requirement->lock();
    change(requirement);
    SaveByName(requirement);
    requirement->unlock();
}

void TDescriptionTest::DescribeAsBen(std::int32_t number, const std::u16string& html) {
    ChangeAsBen(number, [&](const TReq& requirement) { requirement->Get_Description()->Set_Text(html); });
}

void TDescriptionTest::RunInStore(const std::string& statements) {
    Backend::Database(Server->DatabasePath(), Backend::Database::Mode::OpenExisting).Execute(statements);
}

QWidget& TDescriptionTest::Page() {
    return *Frame().wbrReqDescription->Control().Widget().focusProxy();
}

void TDescriptionTest::ClickIntoText() {
    Page().window()->activateWindow();
    QTest::mouseClick(&Page(), Qt::LeftButton, {}, QPoint(Page().width() - 20, 25));
    EXPECT_TRUE(WaitUntil([this] { return Frame().isHtmlFocused(); }));
}

void TDescriptionTest::TypeIntoPage(const std::string& text) {
    QTest::keyClicks(&Page(), ToQt(text));
}

void TDescriptionTest::KeyIntoPage(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&Page(), key, modifiers);
}

void TDescriptionTest::SelectAllText() {
    KeyIntoPage(Qt::Key_A, Qt::ControlModifier);
    WaitUntil([this] { return Document<IHTMLDocument2>()->get_selection()->get_type() == "Text"; });
}

bool TDescriptionTest::Locked() {
    return Helpers().CurrentRequirement->Get_LockedByCurrentUser() != Quorane_TLB::WordFalse;
}

bool TDescriptionTest::WaitForLock() {
    return WaitUntil([this] {
        Application().ProcessIdle();
        return Locked();
    });
}

void TDescriptionTest::Save() {
    ASSERT_TRUE(WaitForLock());
    TActor::Settle();
    User->Click("btnSave");
}
