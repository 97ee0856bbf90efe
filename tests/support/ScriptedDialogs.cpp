#include "support/ScriptedDialogs.h"

#include <utility>

TScriptedDialogs::TScriptedDialogs()
    : FBefore(Application().SetDialogs(this)) {}

TScriptedDialogs::~TScriptedDialogs() {
    Application().SetDialogs(FBefore);
}

void TScriptedDialogs::Answer(TMessageResult result, std::function<void()> action) {
    FAnswers.push_back({result, std::move(action)});
}

std::vector<std::string> TScriptedDialogs::TakeErrors() {
    return std::exchange(FErrors, {});
}

std::vector<TMessage> TScriptedDialogs::TakeMessages() {
    return std::exchange(FMessages, {});
}

TMessageResult TScriptedDialogs::ShowMessage(const TMessage& message) {
    FMessages.push_back(message);
    if (FAnswers.empty()) {
        FUnexpected.push_back(message);
        switch (message.Buttons) {
        case TMessageButtons::Ok:
            return TMessageResult::Ok;
        case TMessageButtons::YesNo:
            return TMessageResult::No;
        default:
            return TMessageResult::Cancel;
        }
    }
    const TAnswer answer = std::move(FAnswers.front());
    FAnswers.pop_front();
    if (answer.Action) answer.Action();
    return answer.Result;
}

void TScriptedDialogs::ShowError(const std::string& text) {
    FErrors.push_back(text);
}

std::optional<std::string> TScriptedDialogs::NextFile() {
    if (FFiles.empty()) return std::nullopt;
    auto path = std::move(FFiles.front());
    FFiles.pop_front();
    return path;
}

std::optional<std::string> TScriptedDialogs::OpenFile(const TFileQuestion&) {
    return NextFile();
}
std::optional<std::string> TScriptedDialogs::OpenPicture(const TFileQuestion&) {
    return NextFile();
}
std::optional<std::string> TScriptedDialogs::SaveFile(const TFileQuestion&) {
    return NextFile();
}

std::optional<TColor> TScriptedDialogs::PickColor(TColor) {
    if (FColors.empty()) return std::nullopt;
    const auto color = FColors.front();
    FColors.pop_front();
    return color;
}
