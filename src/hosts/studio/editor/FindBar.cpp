#include "hosts/studio/editor/FindBar.h"

#include "hosts/studio/editor/SourceEdit.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace {

QToolButton* MakeButton(const char* name, const QString& caption, const QString& hint, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromUtf8(name));
    button->setText(caption);
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setAutoRaise(true);
    return button;
}

} // namespace

TFindBar::TFindBar(std::function<TSourceEdit*()> currentEditor, QWidget* parent)
    : QWidget(parent)
    , FCurrentEditor(std::move(currentEditor))
    , FText(new QLineEdit(this))
    , FMatchCase(new QCheckBox(QStringLiteral("Match &case"), this))
    , FWholeWord(new QCheckBox(QStringLiteral("&Whole word"), this))
    , FResult(new QLabel(this)) {
    setObjectName(QStringLiteral("FindBar"));
    FText->setObjectName(QStringLiteral("FindText"));
    FText->setPlaceholderText(QStringLiteral("Find in this file"));
    FText->setClearButtonEnabled(true);
    FText->setAccessibleName(FText->placeholderText());
    constexpr int textWidth = 320;
    FText->setMaximumWidth(textWidth);

    auto* previous = MakeButton("FindPrevious", QStringLiteral("Previous"),
                                QStringLiteral("Find previous (Shift+F3)"), this);
    auto* next = MakeButton("FindNext", QStringLiteral("Next"), QStringLiteral("Find next (F3)"), this);
    auto* dismiss = MakeButton("FindClose", QStringLiteral("✕"), QStringLiteral("Close (Esc)"), this);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    layout->addWidget(FText, 1);
    for (QWidget* widget : std::initializer_list<QWidget*>{previous, next, FMatchCase, FWholeWord, FResult})
        layout->addWidget(widget);
    layout->addStretch(1);
    layout->addWidget(dismiss);

    connect(FText, &QLineEdit::textEdited, this, [this] { FindWhileTyping(); });
    connect(FText, &QLineEdit::returnPressed, this, [this] { FindNext(true); });
    connect(previous, &QToolButton::clicked, this, [this] { FindNext(false); });
    connect(next, &QToolButton::clicked, this, [this] { FindNext(true); });
    connect(dismiss, &QToolButton::clicked, this, [this] { Dismiss(); });
    hide();
}

void TFindBar::Open() {
    if (TSourceEdit* editor = FCurrentEditor()) {
        const QString selected = editor->selectedText();
        if (!selected.isEmpty() && !selected.contains(u'\n') && !selected.contains(u'\r'))
            FText->setText(selected);
    }
    FResult->clear();
    show();
    FText->selectAll();
    FText->setFocus();
}

bool TFindBar::FindNext(bool forward) {
    TSourceEdit* editor = FCurrentEditor();
    if (!editor || FText->text().isEmpty()) return false;
    int line = 0;
    int column = 0;
    editor->getCursorPosition(&line, &column);
    // A search backwards starts before the hit that is selected now.
    if (int lineTo, columnTo; !forward && editor->hasSelectedText())
        editor->getSelection(&line, &column, &lineTo, &columnTo);
    return Find(forward, line, column);
}

// The hit under the cursor grows while it still fits what is typed.
void TFindBar::FindWhileTyping() {
    TSourceEdit* editor = FCurrentEditor();
    if (!editor || FText->text().isEmpty()) {
        FResult->clear();
        return;
    }
    int line = 0;
    int column = 0;
    editor->getCursorPosition(&line, &column);
    if (int lineTo, columnTo; editor->hasSelectedText())
        editor->getSelection(&line, &column, &lineTo, &columnTo);
    Find(true, line, column);
}

bool TFindBar::Find(bool forward, int line, int column) {
    constexpr bool regularExpression = false;
    constexpr bool wrapAround = true;
    const bool found =
        FCurrentEditor()->findFirst(FText->text(), regularExpression, FMatchCase->isChecked(),
                                    FWholeWord->isChecked(), wrapAround, forward, line, column);
    ShowResult(found);
    return found;
}

void TFindBar::ShowResult(bool found) {
    FResult->setText(found ? QString() : QStringLiteral("No match"));
}

void TFindBar::Dismiss() {
    hide();
    if (TSourceEdit* editor = FCurrentEditor()) editor->setFocus();
}

void TFindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Dismiss();
    else
        QWidget::keyPressEvent(event);
}
