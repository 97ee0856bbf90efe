// The desktop's own message boxes and common dialogs.
#pragma once

#include "platform/widgets/Application.h"

class TNativeDialogs : public IDialogs {
public:
    TMessageResult ShowMessage(const TMessage& message) override;
    void ShowError(const std::string& text) override;
    std::optional<std::string> OpenFile(const TFileQuestion& question) override;
    std::optional<std::string> OpenPicture(const TFileQuestion& question) override;
    std::optional<std::string> SaveFile(const TFileQuestion& question) override;
    std::optional<TColor> PickColor(TColor current) override;
};
