// A browser control in a window of its own, with the real engine behind it.
#pragma once

#include "platform/engine/WebBrowser.h"
#include "platform/widgets/Forms.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

#include <QTest>

#include <gmock/gmock.h>

class TEngineFixture : public testing::Test {
public:
    // Handles events until the condition holds; false when it never does. The engine's
    // process is served in full, which QTest's own wait does not do.
    static bool WaitUntil(const std::function<bool()>& condition);

protected:
    TEngineFixture();

    // Loads a document and waits until it is there.
    void Load(const std::string& html);
    // The same, with editing on and the focus in it.
    void Edit(const std::string& html);

    template<class T> std::shared_ptr<T> Document() {
        return std::dynamic_pointer_cast<T>(FBrowser.Document());
    }
    std::string Html();
    // A range over the selection; empty when a control is selected.
    THtmlHandle<IHTMLTxtRange> TextRange();
    QWidget& KeyTarget() { return *FBrowser.Control().Widget().focusProxy(); }
    void Type(const std::string& text);
    void Click(int x, int y);
    bool Dirty() { return Document<IPersistStreamInit>()->IsDirty() == hsOk; }
    void SelectAll();
    // Sends a signal to the engine's process.
    void SignalEngine(int signal);

    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
    TForm FForm{nullptr, "engineForm"};
    TWebBrowser FBrowser{FForm, "wbrTest"};
};
