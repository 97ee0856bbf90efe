// What the tests of the component layer share.
#pragma once

#include <string>
#include <vector>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTest>

#include "platform/widgets/Forms.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"

using TLog = std::vector<std::string>;

// An object that counts how many of its kind live.
class TCounted : public TObject {
public:
    explicit TCounted(int& alive)
        : FAlive(alive) {
        ++FAlive;
    }
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
    form.activateWindow();
    TActor::Settle();
}
