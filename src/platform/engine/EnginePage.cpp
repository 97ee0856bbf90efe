#include "platform/engine/EnginePage.h"

#include "contracts/Exceptions.h"
#include "contracts/HtmlEngine.h"
#include "contracts/Pictures.h"
#include "platform/engine/AgentScript.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QPointer>
#include <QSet>
#include <QWebChannel>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>

#include <csignal>

namespace {

// Of one load, when the refusal of a link takes it along.
constexpr int MostAttempts = 5;
constexpr std::chrono::milliseconds FirstLoadCheck{10};
constexpr auto AgentWorld = QWebEngineScript::ApplicationWorld;

[[noreturn]] void Fail(const QString& what) {
    throw EOleSysError(what.toStdString(), hsFail);
}

QString ToJson(const QJsonObject& object) {
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

// Empty for a text that is no object.
QJsonObject Parse(const QString& json) {
    return QJsonDocument::fromJson(json.toUtf8()).object();
}

QString ChannelScript() {
    QFile file(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    if (!file.open(QIODevice::ReadOnly)) Fail(QStringLiteral("The engine's channel is missing."));
    return QString::fromUtf8(file.readAll());
}

} // namespace

void TFileGuard::SetDocument(const QString& path) {
    FDocument = QFileInfo(path).absoluteFilePath();
}

QString TFileGuard::Choose(const QString& path) {
    const QString address = ToQt(PictureAddress(FromQt(path)));
    ChoosePicture(FromQt(path));
    if (!FChosen.contains(address)) FChosen.append(address);
    return address;
}

bool TFileGuard::AllowsPicture(const QUrl& url) const {
    if (url.scheme() == QStringLiteral("data")) return true;
    if (!url.isLocalFile() || !url.host().isEmpty()) return false;
    // A way through a link to another folder leads out as well.
    const QString path = QFileInfo(url.toLocalFile()).canonicalFilePath();
    if (path.isEmpty()) return false;
    const QString folder = QFileInfo(ToQt(PictureCacheFolder())).canonicalFilePath();
    return IsChosenPicture(FromQt(path)) || (!folder.isEmpty() && path.startsWith(folder + u'/'));
}

void TFileGuard::interceptRequest(QWebEngineUrlRequestInfo& info) {
    const QUrl url = info.requestUrl();
    const auto kind = info.resourceType();
    const bool isDocument =
        kind == QWebEngineUrlRequestInfo::ResourceTypeMainFrame && url.toLocalFile() == FDocument;
    const bool isPicture = kind == QWebEngineUrlRequestInfo::ResourceTypeImage;
    info.block(!isDocument && !(isPicture && AllowsPicture(url)));
}

void TEngineHost::Post(const QString& json) {
    if (OnPost) OnPost(Parse(json));
}

TEnginePage::TEnginePage(QWebEngineProfile& profile)
    : QWebEnginePage(&profile)
    , FGuard(new TFileGuard(this))
    , FChannel(new QWebChannel(this)) {
    SetUp();
    InstallAgent();
    connect(this, &QWebEnginePage::loadingChanged, this,
            [this](const QWebEngineLoadingInfo& info) { LoadingChanged(info); });
    connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] { RendererGone(); });
    FLoadLimit.setSingleShot(true);
    connect(&FLoadLimit, &QTimer::timeout, this, [this] { GiveUpLoad(); });
    FLoadCheck.setSingleShot(true);
    connect(&FLoadCheck, &QTimer::timeout, this, [this] { CheckLoad(); });
}

TEnginePage::~TEnginePage() {
    setUrlRequestInterceptor(nullptr);
}

void TEnginePage::SetUp() {
    QWebEngineSettings& options = *settings();
    options.setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    options.setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    options.setAttribute(QWebEngineSettings::LocalStorageEnabled, false);
    options.setAttribute(QWebEngineSettings::PluginsEnabled, false);
    options.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    options.setAttribute(QWebEngineSettings::AutoLoadIconsForPage, false);
    options.setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
    setUrlRequestInterceptor(FGuard);
}

void TEnginePage::InstallAgent() {
    FHost.OnPost = [this](const QJsonObject& message) {
        // Whoever tells news takes calls as well.
        FHung = false;
        Hear(message);
    };
    FChannel->registerObject(QStringLiteral("host"), &FHost);
    setWebChannel(FChannel, AgentWorld);
    FAgent = ChannelScript() + u'\n' + QString::fromUtf8(AgentScript);
}

void TEnginePage::Load(const QString& path) {
    SendPosted();
    LeaveDocument();
    FNews.clear();
    FMove.reset();
    FLoading = true;
    FGuard->SetDocument(path);
    FDocument = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    FLoadLimit.start(FLimits.Load);
    FAttempts = 0;
    StartLoad();
}

void TEnginePage::StartLoad() {
    // Tells the document apart from an earlier load of the same file.
    FDocument.setQuery(QString::number(++FLoads));
    ++FAttempts;
    FMissed = false;
    load(FDocument);
}

// A link that is refused also ends in a failed load, and a load that a newer one breaks
// off ends as stopped; neither says anything about the document. But a link that was
// clicked just before a load may take the load along when it is refused, or make the
// engine tell of each later load under the address of the one before. Then the page is
// asked what it shows.
void TEnginePage::LoadingChanged(const QWebEngineLoadingInfo& info) {
    const bool ended = info.status() != QWebEngineLoadingInfo::LoadStartedStatus;
    if (!FLoading || !ended) return;
    if (info.url() == FDocument && info.status() == QWebEngineLoadingInfo::LoadSucceededStatus)
        EndLoad(true);
    else
        FLoadCheck.start(0);
}

void TEnginePage::CheckLoad() {
    const QString script = QStringLiteral("location.search + ' ' + document.readyState");
    Run(script, [this, load = FLoads](const QString& answer) {
        if (FLoading && load == FLoads) JudgeLoad(answer);
    });
}

// The page that is asked may be the old one while the new one is on its way, so a load
// counts as lost when it is missed twice.
void TEnginePage::JudgeLoad(const QString& shown) {
    const bool there = shown.section(u' ', 0, 0).mid(1) == FDocument.query();
    if (there && shown.endsWith(QStringLiteral(" complete"))) {
        EndLoad(true);
        return;
    }
    const bool lost = !there && !isLoading() && std::exchange(FMissed, true);
    if (lost && (FAttempts == MostAttempts || !QFileInfo(FDocument.toLocalFile()).isReadable())) {
        EndLoad(false);
        return;
    }
    if (lost) StartLoad();
    FLoadCheck.start(FirstLoadCheck * (1 << FAttempts));
}

void TEnginePage::EndLoad(bool succeeded) {
    if (!FLoading) return;
    FLoadLimit.stop();
    FLoadCheck.stop();
    FLoading = false;
    FReady = succeeded;
    // A script that the engine is to run by itself is forgotten now and then when its
    // process is started anew.
    if (succeeded) runJavaScript(FAgent, AgentWorld);
    if (OnLoaded) OnLoaded();
}

// A process that hangs would take no later load either; a new one does. The load ends
// with the news that the old one is gone.
void TEnginePage::GiveUpLoad() {
    const qint64 process = renderProcessPid();
    if (process <= 0 || ::kill(static_cast<pid_t>(process), SIGKILL) != 0) EndLoad(false);
}

void TEnginePage::RendererGone() {
    LeaveDocument();
    Queue([this] {
        if (OnGone) OnGone();
    });
    EndLoad(false);
}

// Whoever waits for an answer of the document would wait for ever.
void TEnginePage::LeaveDocument() {
    ++FGeneration;
    FReady = false;
    FHung = false;
    FPosted = {};
    FReleased = {};
    ForgetSelection();
    if (FWakeCaller) FWakeCaller();
}

bool TEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    if (isMainFrame && url == FDocument && FLoading) return true;
    if (type == NavigationTypeLinkClicked) TellLink(url);
    if (FLoading) FLoadCheck.start(0);
    return false;
}

// Other kinds of address start programs or read files of this machine.
bool TEnginePage::LeadsOutside(const QUrl& url) {
    static const QSet<QString> schemes{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("ftp"),
                                       QStringLiteral("mailto")};
    return schemes.contains(url.scheme());
}

void TEnginePage::TellLink(const QUrl& url) {
    if (!LeadsOutside(url)) return;
    Queue([this, url] {
        if (OnLink) OnLink(url);
    });
}

void TEnginePage::Hear(const QJsonObject& message) {
    if (message[QStringLiteral("event")] == QStringLiteral("mousemove")) {
        HearMove(message);
        return;
    }
    if (const QJsonValue link = message[QStringLiteral("link")]; link.isString()) {
        TellLink(QUrl(link.toString()));
        return;
    }
    ForgetSelection();
    Queue([this, message] {
        // A call that was under way when the news came may have kept what was before.
        ForgetSelection();
        if (OnMessage) OnMessage(message);
    });
}

// A pointer that only moves leaves the selection as it was. Moves that a busy program
// has not come to are told as one.
void TEnginePage::HearMove(const QJsonObject& message) {
    const bool waits = FMove.has_value();
    FMove = message;
    if (waits) return;
    Queue([this] {
        const QJsonObject move = *std::exchange(FMove, std::nullopt);
        FControlAtMove = move[QStringLiteral("control")].toBool();
        // A handler that waits for the user must not go by it any more.
        QMetaObject::invokeMethod(
            this, [this] { FControlAtMove.reset(); }, Qt::QueuedConnection);
        if (OnMessage) OnMessage(move);
    });
}

void TEnginePage::ForgetSelection() {
    FSelection.reset();
    FControlAtMove.reset();
}

void TEnginePage::Queue(std::function<void()> news) {
    FNews.push_back(std::move(news));
    DeliverLater();
}

void TEnginePage::DeliverLater() {
    if (!FNews.empty() && FCallDepth == 0)
        QMetaObject::invokeMethod(
            this, [this] { DeliverNews(); }, Qt::QueuedConnection);
}

void TEnginePage::DeliverNews() {
    const QPointer<TEnginePage> alive(this);
    while (alive && !FNews.empty() && FCallDepth == 0) {
        const auto news = std::move(FNews.front());
        FNews.erase(FNews.begin());
        news();
    }
}

void TEnginePage::Release(int number, int generation) {
    if (generation == FGeneration) FReleased.append(number);
}

const QJsonObject& TEnginePage::Selection() {
    if (!FSelection) FSelection = Call({QStringLiteral("selection"), 0, {}, {}, true}).toObject();
    return *FSelection;
}

bool TEnginePage::ControlSelected() {
    if (!FSelection && FControlAtMove) return *FControlAtMove;
    return Selection()[QStringLiteral("type")] == QStringLiteral("Control");
}

void TEnginePage::CheckReady() const {
    if (!FReady) Fail(QStringLiteral("The document is not loaded."));
    if (FHung) Fail(QStringLiteral("The HTML engine does not answer."));
}

// The script of the call, with which goes what was posted and released before.
QString TEnginePage::TakeScript(const TEngineCall& call) {
    const QJsonObject request{{QStringLiteral("posted"), std::exchange(FPosted, {})},
                              {QStringLiteral("release"), std::exchange(FReleased, {})},
                              {QStringLiteral("operation"), call.Operation},
                              {QStringLiteral("on"), call.On},
                              {QStringLiteral("arguments"), call.Arguments},
                              {QStringLiteral("moves"), call.Moves}};
    return QStringLiteral("quoraneCall(%1)").arg(ToJson(request));
}

void TEnginePage::Post(const QString& operation, int on, const QJsonArray& arguments, int made) {
    CheckReady();
    ForgetSelection();
    if (FPosted.isEmpty())
        QMetaObject::invokeMethod(
            this, [this] { SendPosted(); }, Qt::QueuedConnection);
    FPosted.append(QJsonArray{operation, on, arguments, made});
}

// The base class, which goes last, answers what it still owes.
void TEnginePage::Run(const QString& script, const std::function<void(const QString&)>& then) {
    runJavaScript(script, AgentWorld, [life = std::weak_ptr(FLife), then](const QVariant& answer) {
        if (!life.expired()) then(answer.toString());
    });
}

void TEnginePage::SendPosted() {
    if (FPosted.isEmpty()) return;
    ++FCalls;
    Run(TakeScript({}), [this](const QString& answer) {
        const QJsonValue failure = Parse(answer)[QStringLiteral("failure")];
        if (!failure.isString()) return;
        Queue([text = failure.toString()] { Application().Dispatch(nullptr, [&] { Fail(text); }); });
    });
}

QJsonValue TEnginePage::Call(const TEngineCall& call) {
    CheckReady();
    const QString script = TakeScript(call);
    const int generation = FGeneration;
    const QString answer = RunAndWait(script);
    if (!call.Reads) ForgetSelection();
    if (generation != FGeneration) Fail(QStringLiteral("The document went away during a call."));
    if (answer.isEmpty()) Fail(QStringLiteral("The HTML engine does not answer."));
    const QJsonObject result = Parse(answer);
    if (const QJsonValue failure = result[QStringLiteral("failure")]; failure.isString())
        Fail(failure.toString());
    return result[QStringLiteral("value")];
}

// The wait is a loop of its own. What the agent tells meanwhile is kept for after it,
// so no handler runs between a caller and its answer.
QString TEnginePage::RunAndWait(const QString& script) {
    struct TAnswer {
        QEventLoop Loop;
        QString Text;
        bool Waiting = true;
    };
    const auto answer = std::make_shared<TAnswer>();
    const auto wake = [weak = std::weak_ptr(answer)] {
        if (const auto waiting = weak.lock()) {
            waiting->Waiting = false;
            waiting->Loop.quit();
        }
    };
    const int generation = FGeneration;
    const auto outerWake = std::exchange(FWakeCaller, wake);
    ++FCalls;
    const QPointer<TEnginePage> alive(this);
    runJavaScript(script, AgentWorld,
                  [this, life = std::weak_ptr(FLife), generation, wake,
                   weak = std::weak_ptr(answer)](const QVariant& value) {
                      if (!life.expired() && generation == FGeneration) FHung = false;
                      if (const auto waiting = weak.lock()) waiting->Text = value.toString();
                      wake();
                  });
    const TApplication::TEngineCall mark;
    QTimer limit;
    limit.setSingleShot(true);
    connect(&limit, &QTimer::timeout, this, [this, generation, wake] {
        FHung = generation == FGeneration;
        wake();
    });
    limit.start(FLimits.Call);
    ++FCallDepth;
    if (answer->Waiting) answer->Loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!alive) Fail(QStringLiteral("The HTML engine was taken away during a call."));
    --FCallDepth;
    FWakeCaller = outerWake;
    // The documents of callers farther out are gone as well.
    if (FWakeCaller && generation != FGeneration) FWakeCaller();
    DeliverLater();
    return answer->Text;
}
