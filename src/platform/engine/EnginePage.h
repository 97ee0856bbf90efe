// One page of the engine: loads files, keeps the network out, and carries calls to the
// agent in the page and news from it.
#pragma once

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWebChannel;
class QWebEngineLoadingInfo;

// Lets through only what belongs to the document on show: the file itself, pictures
// inside the text, in the folder for pictures and those that the user put in.
class TFileGuard : public QWebEngineUrlRequestInterceptor {
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void SetDocument(const QString& path);
    // A picture that the user puts in (ChoosePicture); also later documents show it, since
    // a text that is loaded again after the engine's process died still holds it. Gives
    // its address.
    QString Choose(const QString& path);
    // The addresses of all of these.
    const QJsonArray& Chosen() const { return FChosen; }

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    bool AllowsPicture(const QUrl& url) const;

    QString FDocument;
    QJsonArray FChosen;
};

// The object that the agent sees.
class TEngineHost : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void Post(const QString& json);

    std::function<void(const QJsonObject& message)> OnPost;
};

// In place of an object's number: a range over the selection, which the call makes. Its
// value comes with the range's number.
constexpr int TextSelectionNumber = -1;
constexpr int ControlSelectionNumber = -2;

struct TEngineCall {
    QString Operation;
    // The number of the object in the agent's table; 0 for the document.
    int On = 0;
    QJsonArray Arguments;
    // Moves of a range that come before the operation.
    QJsonArray Moves = {};
    // Neither document nor selection is different afterwards.
    bool Reads = false;
};

// After these times a wait ends as failed.
struct TEngineLimits {
    std::chrono::milliseconds Call{10'000};
    std::chrono::milliseconds Load{30'000};
};

class TEnginePage : public QWebEnginePage {
public:
    explicit TEnginePage(QWebEngineProfile& profile);
    ~TEnginePage() override;

    void Load(const QString& path);
    bool Loading() const { return FLoading; }
    // False before the first load, during a load and while the engine's process is dead.
    bool Ready() const { return FReady; }
    // Counts the documents, so that an object knows whether its own is still there.
    int Generation() const { return FGeneration; }

    // Runs one operation and waits for its answer in a loop that takes no input. Raises
    // EOleSysError when the page is not ready, the operation fails, no answer comes in
    // time, the engine's process dies or another document is loaded meanwhile. After a
    // call without an answer the next ones fail at once until the engine comes round.
    QJsonValue Call(const TEngineCall& call);
    // Has an operation done without waiting: right before the next call, or when the
    // program comes back to its loop. If it fails, that call raises the failure and does
    // nothing else; without a call the failure ends in the standard error box. made is
    // the number for the object that the operation makes, 0 if it makes none.
    void Post(const QString& operation, int on, const QJsonArray& arguments, int made = 0);
    // For an object that a posted operation makes.
    int NewNumber() { return FLastNumber += 2; }
    // The kind of the selection and the state of the formatting commands on it: asked
    // for once, and again after news or a call that may have changed it.
    const QJsonObject& Selection();
    // Whether a control is selected. Needs no call in the handler of a mouse move, which
    // brings the answer with it.
    bool ControlSelected();
    // How often the engine's process was asked for something.
    std::int64_t Calls() const { return FCalls; }
    void SetLimits(const TEngineLimits& limits) { FLimits = limits; }
    // The object is no longer needed; told with the next call.
    void Release(int number, int generation);
    bool Calling() const { return FCallDepth > 0; }

    TFileGuard& Guard() { return *FGuard; }
    // Whether a link to there may be followed.
    static bool LeadsOutside(const QUrl& url);
    // Takes news in, which OnMessage gives out in order.
    void Hear(const QJsonObject& message);

    // News from the agent, never while a call waits.
    std::function<void(const QJsonObject& message)> OnMessage;
    std::function<void()> OnLoaded;
    // The engine's process has died, and the document with it. Never while a call waits.
    std::function<void()> OnGone;
    std::function<void(const QUrl& url)> OnLink;

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }

private:
    void SetUp();
    void InstallAgent();
    void LoadingChanged(const QWebEngineLoadingInfo& info);
    void StartLoad();
    void CheckLoad();
    void JudgeLoad(const QString& shown);
    void EndLoad(bool succeeded);
    void GiveUpLoad();
    void RendererGone();
    void LeaveDocument();
    void TellLink(const QUrl& url);
    void HearMove(const QJsonObject& message);
    void ForgetSelection();
    void Queue(std::function<void()> news);
    void DeliverLater();
    void DeliverNews();
    void CheckReady() const;
    QString TakeScript(const TEngineCall& call);
    // Without waiting; the answer comes only while the page lives.
    void Run(const QString& script, const std::function<void(const QString&)>& then);
    void SendPosted();
    QString RunAndWait(const QString& script);

    TFileGuard* FGuard;
    QWebChannel* FChannel;
    TEngineHost FHost;
    QString FAgent;
    QUrl FDocument;
    TEngineLimits FLimits;
    QTimer FLoadLimit;
    // Runs out when it is in doubt what has become of a load.
    QTimer FLoadCheck;
    std::vector<std::function<void()>> FNews;
    QJsonArray FPosted;
    QJsonArray FReleased;
    std::optional<QJsonObject> FSelection;
    // The newest move of the mouse that waits to be told.
    std::optional<QJsonObject> FMove;
    std::optional<bool> FControlAtMove;
    std::function<void()> FWakeCaller;
    std::int64_t FCalls = 0;
    int FGeneration = 0;
    // Odd ones; the agent gives the even ones.
    int FLastNumber = -1;
    int FLoads = 0;
    int FAttempts = 0;
    bool FMissed = false;
    int FCallDepth = 0;
    bool FLoading = false;
    bool FReady = false;
    bool FHung = false;
    const std::shared_ptr<bool> FLife = std::make_shared<bool>(true);
};
