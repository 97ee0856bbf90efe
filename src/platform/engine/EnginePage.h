// One page of the engine: loads files, keeps the network out, and carries calls to the
// agent in the page and news from it.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include <functional>
#include <set>
#include <vector>

class QWebChannel;
class QWebEngineLoadingInfo;

// Lets through only what belongs to the document on show: the file itself, files in its
// folder, pictures inside the text, and files that the user put in.
class TFileGuard : public QWebEngineUrlRequestInterceptor {
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void SetDocument(const QString& path);
    void Allow(const QString& path) { FAllowed.insert(path); }

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    bool Allows(const QUrl& url) const;

    QString FFolder;
    std::set<QString> FAllowed;
};

// The object that the agent sees.
class TEngineHost : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void Post(const QString& json);

    std::function<void(const QJsonObject& message)> OnPost;
};

struct TEngineCall {
    QString Operation;
    // The number of the object in the agent's table; 0 for the document.
    int On = 0;
    QJsonArray Arguments;
    // Moves of a range that come before the operation.
    QJsonArray Moves;
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
    // time or the engine's process dies.
    QJsonValue Call(const TEngineCall& call);
    // The object is no longer needed; told with the next call.
    void Release(int number, int generation);
    bool Calling() const { return FCallDepth > 0; }

    TFileGuard& Guard() { return *FGuard; }

    // News from the agent, never while a call waits.
    std::function<void(const QJsonObject& message)> OnMessage;
    std::function<void()> OnLoaded;
    std::function<void(const QUrl& url)> OnLink;

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }

private:
    void SetUp();
    void InstallAgent();
    void LoadingChanged(const QWebEngineLoadingInfo& info);
    void RendererGone();
    void Queue(const QJsonObject& message);
    void DeliverMessages();
    QString RunAndWait(const QString& script);

    TFileGuard* FGuard;
    QWebChannel* FChannel;
    TEngineHost FHost;
    QUrl FDocument;
    std::vector<QJsonObject> FMessages;
    QJsonArray FReleased;
    std::function<void()> FWakeCaller;
    int FGeneration = 0;
    int FCallDepth = 0;
    bool FLoading = false;
    bool FReady = false;
};
