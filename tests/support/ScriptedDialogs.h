// Dialogs that answer by script. While it lives it stands in place of the native
// ones; every box that comes up is kept, and one that the script does not expect is
// answered by its cancelling button and kept among the unexpected ones.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/widgets/Application.h"

class TScriptedDialogs : public IDialogs {
public:
    TScriptedDialogs();
    ~TScriptedDialogs() override;

    // Answers the next message box. The action runs while the box is up.
    void Answer(TMessageResult result, std::function<void()> action = {});
    void AnswerFile(std::optional<std::string> path) { FFiles.push_back(std::move(path)); }
    void AnswerColor(std::optional<TColor> color) { FColors.push_back(color); }

    const std::vector<TMessage>& Messages() const { return FMessages; }
    const std::vector<TMessage>& Unexpected() const { return FUnexpected; }
    // Texts of the standard error box, oldest first.
    const std::vector<std::string>& Errors() const { return FErrors; }
    // The texts of the error box since the last call.
    std::vector<std::string> TakeErrors();
    std::vector<TMessage> TakeMessages();

    TMessageResult ShowMessage(const TMessage& message) override;
    void ShowError(const std::string& text) override;
    std::optional<std::string> OpenFile(const TFileQuestion& question) override;
    std::optional<std::string> OpenPicture(const TFileQuestion& question) override;
    std::optional<std::string> SaveFile(const TFileQuestion& question) override;
    std::optional<TColor> PickColor(TColor current) override;

private:
    struct TAnswer {
        TMessageResult Result;
        std::function<void()> Action;
    };
    std::optional<std::string> NextFile();

    IDialogs* FBefore;
    std::deque<TAnswer> FAnswers;
    std::deque<std::optional<std::string>> FFiles;
    std::deque<std::optional<TColor>> FColors;
    std::vector<TMessage> FMessages;
    std::vector<TMessage> FUnexpected;
    std::vector<std::string> FErrors;
};
