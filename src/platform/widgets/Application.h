// The message loop's side of the component layer: the dispatcher that every handler
// runs under, idle updates, message boxes and common dialogs, the screen. The object
// lives in this library, so the host and the modules that it loads share it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/widgets/Basics.h"

class TActionList;
class TComponent;
class TForm;

enum class TMessageIcon { None, Information, Warning, Error, Question };
enum class TMessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class TMessageResult { None, Ok, Cancel, Yes, No };

struct TMessage {
    std::string Text;
    std::string Caption;
    TMessageIcon Icon = TMessageIcon::None;
    TMessageButtons Buttons = TMessageButtons::Ok;
    // None: the first button of the set.
    TMessageResult Default = TMessageResult::None;
};

struct TFileQuestion {
    std::string Title;
    // Pairs of a label and patterns: "All (*.gif;*.jpg)|*.gif;*.jpg|GIF (*.gif)|*.gif".
    std::string Filter;
    // A folder or a full path to begin with; empty for the last one used.
    std::string Start;
};

// All that asks or tells the user something in a window of the system's. A user sees
// the native ones; a test puts its own object in place and answers by script.
class IDialogs {
public:
    virtual ~IDialogs() = default;
    // Gives the button pressed; closing the box counts as Cancel, No or Ok, whichever
    // the set has first in this order.
    virtual TMessageResult ShowMessage(const TMessage& message) = 0;
    // The standard error box.
    virtual void ShowError(const std::string& text) = 0;
    // Full paths in UTF-8; empty when the user cancelled.
    virtual std::optional<std::string> OpenFile(const TFileQuestion& question) = 0;
    virtual std::optional<std::string> OpenPicture(const TFileQuestion& question) = 0;
    virtual std::optional<std::string> SaveFile(const TFileQuestion& question) = 0;
    virtual std::optional<TColor> PickColor(TColor current) = 0;
};

class TApplication {
public:
    TApplication(const TApplication&) = delete;
    TApplication& operator=(const TApplication&) = delete;

    // Runs a handler for a sender (may be empty). An exception ends here, in the
    // standard error box; the answer then is false. May re-enter the message loop.
    template<class Handler> bool Dispatch(const TComponent* sender, Handler&& handler) {
        const TRun run(*this, sender);
        try {
            handler();
            return true;
        } catch (...) {
            HandleException();
            return false;
        }
    }

    // Shows the exception in flight in the standard error box. Call only inside a
    // catch clause.
    void HandleException();
    // Shows the text in the standard error box.
    void ShowException(const std::string& text);
    // The same from a place where no window may open, such as painting: the box comes
    // at the next turn of the message loop, and once for the same text.
    void ShowExceptionLater(const std::string& text);

    // Re-enters the message loop until the user has answered.
    TMessageResult MessageBox(const std::string& text, const std::string& caption,
                              TMessageIcon icon = TMessageIcon::None,
                              TMessageButtons buttons = TMessageButtons::Ok,
                              TMessageResult defaultButton = TMessageResult::None);
    IDialogs& Dialogs();
    // Puts other dialogs in place of the native ones and gives what was there before;
    // empty brings the native ones back. The object isn't owned.
    IDialogs* SetDialogs(IDialogs* dialogs);

    // Called at each ShowModal, in the form's own loop once it shows: a test fills the
    // form in and closes it. Empty for none.
    void SetModalHook(std::function<void(TForm&)> hook);
    void CallModalHook(TForm& form);

    // Handles what waits in the message queue and returns.
    void ProcessMessages();
    // The same, but waits for a message when there is none.
    void WaitMessage();
    // Handles messages as long as the condition holds.
    void WaitWhile(const std::function<bool()>& condition);

    // Told of every key before shortcuts and controls see it. Setting handled keeps
    // all shortcuts from a key that goes down; it reaches its control in any case.
    using TMessageHook = std::function<void(const TKeyMessage& message, bool& handled)>;
    // There is one hook at a time; empty takes it away.
    void SetMessageHook(TMessageHook hook);
    bool CallMessageHook(const TKeyMessage& message);
    // Runs the update handlers now, as the loop does when it has nothing left to do.
    // Does nothing while a handler or a marked engine call is on the stack.
    void ProcessIdle();
    bool HandlerRunning() const { return !FSenders.empty(); }
    // Whether a handler of this sender is on the stack.
    bool IsSending(const TComponent& sender) const;

    void AddActionList(TActionList& list);
    void RemoveActionList(TActionList& list);

    // Marks a call into an engine that waits in a loop of its own, to be entered while it
    // lives. Update handlers hold still meanwhile.
    class TEngineCall {
    public:
        TEngineCall();
        ~TEngineCall();
        TEngineCall(const TEngineCall&) = delete;
        TEngineCall& operator=(const TEngineCall&) = delete;
    };

    // For a modal loop: what is on the stack under it does not count inside it.
    class TModalScope {
    public:
        TModalScope();
        ~TModalScope();
        TModalScope(const TModalScope&) = delete;
        TModalScope& operator=(const TModalScope&) = delete;

    private:
        std::vector<const TComponent*> FSenders;
        int FEngineCalls;
        bool FUpdating;
    };

private:
    friend TApplication& Application();
    class TRun {
    public:
        TRun(TApplication& application, const TComponent* sender)
            : FApplication(application) {
            FApplication.FSenders.push_back(sender);
        }
        ~TRun() { FApplication.FSenders.pop_back(); }
        TRun(const TRun&) = delete;
        TRun& operator=(const TRun&) = delete;

    private:
        TApplication& FApplication;
    };

    TApplication();
    ~TApplication();
    void HookMessageLoop();
    void UpdateActions();

    struct TLoop;
    std::unique_ptr<TLoop> FLoop;
    std::unique_ptr<IDialogs> FNativeDialogs;
    IDialogs* FDialogs = nullptr;
    std::function<void(TForm&)> FModalHook;
    TMessageHook FMessageHook;
    std::vector<const TComponent*> FSenders;
    std::vector<TActionList*> FActionLists;
    std::string FLateError;
    int FEngineCalls = 0;
    bool FUpdating = false;
};

TApplication& Application();

// Shows the hourglass while it lives, however its block is left.
class THourglass {
public:
    THourglass();
    ~THourglass();
    THourglass(const THourglass&) = delete;
    THourglass& operator=(const THourglass&) = delete;
};

class TScreen {
public:
    // Family names of the fonts that the screen can show, sorted.
    std::vector<std::string> Fonts() const;
    // Pointer position in screen coordinates.
    TPoint CursorPosition() const;
    bool HourglassShown() const;
};

TScreen& Screen();
