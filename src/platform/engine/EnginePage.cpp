#include "platform/engine/EnginePage.h"

#include "contracts/Exceptions.h"
#include "contracts/HtmlEngine.h"
#include "platform/engine/AgentScript.h"
#include "platform/widgets/Application.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QPointer>
#include <QTimer>
#include <QWebChannel>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

namespace {

constexpr int LongestCallMs = 10'000;
constexpr auto AgentWorld = QWebEngineScript::ApplicationWorld;

[[noreturn]] void Fail(const QString& what) {
    throw EOleSysError(what.toStdString(), hsFail);
}

QString ToJson(const QJsonObject& object) {
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString ChannelScript() {
    QFile file(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    if (!file.open(QIODevice::ReadOnly)) Fail(QStringLiteral("The engine's channel is missing."));
    return QString::fromUtf8(file.readAll());
}

} // namespace

void TFileGuard::SetDocument(const QString& path) {
    FFolder = QFileInfo(path).absolutePath() + u'/';
    FAllowed = {QFileInfo(path).absoluteFilePath()};
}

bool TFileGuard::Allows(const QUrl& url) const {
    if (url.scheme() == QStringLiteral("data")) return true;
    if (!url.isLocalFile()) return false;
    const QString path = QFileInfo(url.toLocalFile()).absoluteFilePath();
    return FAllowed.contains(path) || path.startsWith(FFolder);
}

void TFileGuard::interceptRequest(QWebEngineUrlRequestInfo& info) {
    info.block(!Allows(info.requestUrl()));
}

void TEngineHost::Post(const QString& json) {
    if (OnPost) OnPost(QJsonDocument::fromJson(json.toUtf8()).object());
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
    FHost.OnPost = [this](const QJsonObject& message) { Queue(message); };
    FChannel->registerObject(QStringLiteral("host"), &FHost);
    setWebChannel(FChannel, AgentWorld);
    QWebEngineScript script;
    script.setName(QStringLiteral("agent"));
    script.setWorldId(AgentWorld);
    script.setInjectionPoint(QWebEngineScript::DocumentReady);
    script.setSourceCode(ChannelScript() + u'\n' + QString::fromUtf8(AgentScript));
    scripts().insert(script);
}

void TEnginePage::Load(const QString& path) {
    ++FGeneration;
    FReady = false;
    FLoading = true;
    FReleased = {};
    FMessages.clear();
    FGuard->SetDocument(path);
    FDocument = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    load(FDocument);
}

// A link that is refused also ends in a failed load, and a load that a newer one breaks
// off ends as stopped; neither says anything about the document.
void TEnginePage::LoadingChanged(const QWebEngineLoadingInfo& info) {
    const bool succeeded = info.status() == QWebEngineLoadingInfo::LoadSucceededStatus;
    const bool failed = info.status() == QWebEngineLoadingInfo::LoadFailedStatus;
    if (!FLoading || info.url() != FDocument || !(succeeded || failed)) return;
    FLoading = false;
    FReady = succeeded;
    if (OnLoaded) OnLoaded();
}

void TEnginePage::RendererGone() {
    const bool wasLoading = FLoading;
    ++FGeneration;
    FReady = false;
    FLoading = false;
    if (FWakeCaller) FWakeCaller();
    if (wasLoading && OnLoaded) OnLoaded();
}

bool TEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    if (isMainFrame && url == FDocument && FLoading) return true;
    if (type == NavigationTypeLinkClicked && OnLink)
        QMetaObject::invokeMethod(
            this, [this, url] { OnLink(url); }, Qt::QueuedConnection);
    return false;
}

void TEnginePage::Queue(const QJsonObject& message) {
    FMessages.push_back(message);
    if (FCallDepth == 0)
        QMetaObject::invokeMethod(
            this, [this] { DeliverMessages(); }, Qt::QueuedConnection);
}

void TEnginePage::DeliverMessages() {
    while (!FMessages.empty() && FCallDepth == 0) {
        const QJsonObject message = FMessages.front();
        FMessages.erase(FMessages.begin());
        if (OnMessage) OnMessage(message);
    }
}

void TEnginePage::Release(int number, int generation) {
    if (generation == FGeneration) FReleased.append(number);
}

QJsonValue TEnginePage::Call(const TEngineCall& call) {
    if (!FReady) Fail(QStringLiteral("The document is not loaded."));
    const QJsonObject request{{QStringLiteral("release"), FReleased},
                              {QStringLiteral("operation"), call.Operation},
                              {QStringLiteral("on"), call.On},
                              {QStringLiteral("arguments"), call.Arguments},
                              {QStringLiteral("moves"), call.Moves}};
    FReleased = {};
    const QString answer = RunAndWait(QStringLiteral("quoraneCall(%1)").arg(ToJson(request)));
    if (answer.isEmpty()) Fail(QStringLiteral("The HTML engine does not answer."));
    const QJsonObject result = QJsonDocument::fromJson(answer.toUtf8()).object();
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
    const auto outerWake = std::exchange(FWakeCaller, [weak = std::weak_ptr(answer)] {
        if (const auto waiting = weak.lock()) waiting->Loop.quit();
    });
    runJavaScript(script, AgentWorld, [weak = std::weak_ptr(answer)](const QVariant& value) {
        const auto waiting = weak.lock();
        if (!waiting || !waiting->Waiting) return;
        waiting->Text = value.toString();
        waiting->Waiting = false;
        waiting->Loop.quit();
    });
    if (answer->Waiting) {
        const TApplication::TEngineCall mark;
        QTimer limit;
        limit.setSingleShot(true);
        connect(&limit, &QTimer::timeout, &answer->Loop, &QEventLoop::quit);
        limit.start(LongestCallMs);
        ++FCallDepth;
        const QPointer<TEnginePage> alive(this);
        answer->Loop.exec(QEventLoop::ExcludeUserInputEvents);
        if (!alive) Fail(QStringLiteral("The HTML engine was taken away during a call."));
        --FCallDepth;
    }
    answer->Waiting = false;
    FWakeCaller = outerWake;
    if (FWakeCaller && !FReady) FWakeCaller();
    if (!FMessages.empty() && FCallDepth == 0)
        QMetaObject::invokeMethod(
            this, [this] { DeliverMessages(); }, Qt::QueuedConnection);
    return answer->Text;
}
