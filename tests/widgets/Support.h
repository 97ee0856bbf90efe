// What the tests of the component layer share: a script in place of the native boxes,
// a record of events, and the user's hand on a widget.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTest>

#include "platform/widgets/Application.h"
#include "platform/widgets/Forms.h"

class TScriptedDialogs : public IDialogs {
public:
    TScriptedDialogs() : FBefore(Application().SetDialogs(this)) {}
    ~TScriptedDialogs() override { Application().SetDialogs(FBefore); }

    TMessageResult ShowMessage(const TMessage&) override { return TMessageResult::Ok; }
    void ShowError(const std::string& text) override {
        Errors.push_back(text);
        if (DuringError)
            DuringError();
    }
    std::optional<std::string> OpenFile(const TFileQuestion&) override { return std::nullopt; }
    std::optional<std::string> OpenPicture(const TFileQuestion&) override { return std::nullopt; }
    std::optional<std::string> SaveFile(const TFileQuestion&) override { return std::nullopt; }
    std::optional<TColor> PickColor(TColor) override { return std::nullopt; }

    std::vector<std::string> Errors;
    std::function<void()> DuringError;

private:
    IDialogs* FBefore;
};

using TLog = std::vector<std::string>;

// A container that tells when it goes.
class TCounted : public TObject {
public:
    explicit TCounted(int& alive) : FAlive(alive) { ++FAlive; }
    ~TCounted() override { --FAlive; }

private:
    int& FAlive;
};

inline void Mouse(QWidget& widget, QEvent::Type type, QPoint point, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget.mapToGlobal(QPointF(point)), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

inline void Click(QWidget& widget, QPoint point) {
    Mouse(widget, QEvent::MouseButtonPress, point, Qt::LeftButton);
    Mouse(widget, QEvent::MouseButtonRelease, point, Qt::NoButton);
}

inline void ShowWindow(TForm& form, int width = 400, int height = 400) {
    form.resize(width, height);
    form.show();
    QCoreApplication::processEvents();
}
