#include "tour/Tour.h"

#include "backend/exchange/SampleDatabase.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/look/Look.h"

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPixmap>

#include <cctype>
#include <cstdio>
#include <stdexcept>
#include <utility>

TTour::TTour(std::filesystem::path pictures)
    : FPictures(std::move(pictures)) {
    std::filesystem::remove_all(FPictures);
    std::filesystem::create_directories(FPictures);
    const std::string data = FFolder.File("data");
    std::filesystem::create_directories(data);
    qputenv("QUORANE_DATA_DIR", data.c_str());
    qputenv("XDG_CONFIG_HOME", FFolder.File("config").c_str());
    Exchange::BuildSampleDatabase({data + "/quorane.db", QUORANE_SAMPLES_DIR, {}});
}

TTour::~TTour() = default;

void TTour::StartStudio() {
    TStudioOptions options = TStudioOptions::Default();
    options.Desktop = FFolder.File("desktop.ini");
    FStudio = std::make_unique<TStudio>(options);
    FStudio->Window().resize(1440, 900);
    FStudio->Window().show();
    FUser = std::make_unique<TActor>(FStudio->Window());
    TActor::Settle();
}

void TTour::CloseStudio() {
    FStudio->Window().close();
    FUser.reset();
    FStudio.reset();
    TActor::Settle();
}

std::filesystem::path TTour::PicturePath(const std::string& title) {
    char number[16];
    std::snprintf(number, sizeof number, "%02d-", ++FNumber);
    std::string name = number;
    for (const char letter : title)
        name += std::isalnum(static_cast<unsigned char>(letter)) ? letter : '-';
    return FPictures / (name + ".png");
}

namespace {

bool OfOneColour(const QImage& picture) {
    const QRgb first = picture.isNull() ? 0 : picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != first) return false;
    return true;
}

// A page is painted by a process of its own, some time after it has loaded: the same
// picture three times in a row is the whole one. An empty description stays blank.
void WaitForPage(QWidget& window) {
    auto* page = window.findChild<QWidget*>(QStringLiteral("wbrReqDescription"));
    if (!page || !page->isVisible()) return;
    constexpr int longestForBlank = 1000;
    QImage last;
    int same = 0;
    TActor::WaitFor(
        [&] {
            const QImage now = page->grab().toImage();
            same = now == last && !OfOneColour(now) ? same + 1 : 0;
            last = now;
            return same >= 3;
        },
        longestForBlank);
}

// Hints are windows of their own, which no grab of the main window holds.
void DrawHints(QPixmap& picture, QWidget& window) {
    QPainter painter(&picture);
    for (QWidget* hint : QApplication::topLevelWidgets())
        if (hint->windowType() == Qt::ToolTip && hint->isVisible())
            painter.drawPixmap(hint->pos() - window.mapToGlobal(QPoint()), hint->grab());
}

} // namespace

void TTour::Picture(const std::string& title, QWidget& window) {
    TActor::Settle();
    WaitForPage(window);
    const auto path = PicturePath(title);
    QPixmap picture = window.grab();
    DrawHints(picture, window);
    Check(picture.save(QString::fromStdString(path.string())), "cannot write " + path.string());
}

void TTour::Step(const std::string& title, const std::function<void()>& step) {
    ++FSteps;
    try {
        step();
        Check(FDialogs.Errors().empty(),
              FDialogs.Errors().empty() ? "" : "an error box came up: " + FDialogs.Errors().front());
        Check(FDialogs.Unexpected().empty(),
              FDialogs.Unexpected().empty() ? "" : "a box came up: " + FDialogs.Unexpected().front().Text);
    } catch (const std::exception&) {
        if (FStudio) Picture("FAILED " + title, FStudio->Window());
        std::printf("FAILED  %s\n", title.c_str());
        throw;
    }
    if (FStudio) Picture(title, FStudio->Window());
    std::printf("ok %2d   %s\n", FSteps, title.c_str());
    std::fflush(stdout);
}

void TTour::Check(bool condition, const std::string& sentence) {
    if (!condition) throw std::runtime_error(sentence);
}

void TTour::ChooseMenu(const std::string& name) {
    QAction* action = nullptr;
    for (const QMenu* menu : FStudio->Window().findChildren<QMenu*>())
        for (QAction* entry : menu->actions())
            if (entry->objectName() == QString::fromStdString(name)) action = entry;
    Check(action != nullptr, "there is no menu entry " + name);
    Check(action->isEnabled() && action->isVisible(), "the menu entry cannot be chosen: " + name);
    action->trigger();
    TActor::Settle();
}

std::string TTour::Text(const std::string& name) {
    QWidget& widget = FUser->Find(name);
    if (auto* edit = dynamic_cast<TEdit*>(&widget)) return edit->Text();
    if (auto* memo = dynamic_cast<TMemo*>(&widget)) return memo->Text();
    if (auto* list = dynamic_cast<TComboBox*>(&widget)) return list->Text();
    throw std::runtime_error("the control shows no text: " + name);
}

void TTour::AnswerLogon(const std::string& user, const std::string& password, bool picture) {
    FUser->WhenModal([=, this](TForm& form) {
        TActor actor(form.Widget());
        actor.Type("edtHost", "local");
        actor.Type("edtUser", user);
        actor.Type("edtPassword", password);
        if (picture) Picture("logon dialog", form.Widget());
        actor.Click("btnOk");
        if (form.ModalResult() == TModalResult::None) actor.Click("btnCancel");
    });
}
