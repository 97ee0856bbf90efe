// Controls that show and edit one value: labels, edits, memos, check boxes, dates.
#pragma once

#include <string>

#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/widgets/Control.h"

class TBitmap;

// A text. "&" marks the access key when the label has a focus control, and shows as it
// is when it has none.
class TLabel : public QLabel, public TControl {
public:
    explicit TLabel(TWinControl* parent, const std::string& name = {}, const std::string& caption = {});
    QWidget& Widget() override { return *this; }
    using TControl::Widget;

    std::string Caption() const { return FCaption; }
    void SetCaption(const std::string& caption);
    // Whether "&" in the caption marks an access key, which it does by default in a label
    // that names a control.
    void SetShowAccelChar(bool show);
    // The control that the label names: its access key moves the focus there.
    void SetFocusControl(TWinControl& control);
    // Breaks the text into lines from the top of the label's bounds.
    void SetWordWrap(bool wrap);
    // In pixels, as one line.
    int TextWidth() const;

private:
    void ShowCaption();

    std::string FCaption;
    bool FShowAccelChar = true;
};

// A rectangle in its colour, with an outline in that of its text.
class TShape : public QWidget, public TControl {
public:
    explicit TShape(TWinControl* parent, const std::string& name = {});
    QWidget& Widget() override { return *this; }
    using TControl::Widget;

protected:
    // Only colours of the system, which it follows.
    void ApplyColor() override;
    void paintEvent(QPaintEvent* event) override;
};

// A picture, scaled to the control's size.
class TImage : public QLabel, public TControl {
public:
    explicit TImage(TWinControl* parent, const std::string& name = {});
    QWidget& Widget() override { return *this; }
    using TControl::Widget;
    // An SVG of the icon sheets (look/ImageList.h) by its name.
    void SetPicture(const std::string& iconName, int size);
    // One that takes the control's width, from its top, in the palette's colours, over a
    // pale ground that fills the control.
    void SetBackground(const std::string& name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string FBackground;
};

// One line of text. OnChange fires for each change, the program's too; setting the
// text that stands there changes nothing and fires nothing.
class TEdit : public TControlOf<QLineEdit> {
public:
    explicit TEdit(TWinControl* parent, const std::string& name = {});
    TEvent<> OnChange;

    std::string Text() const;
    void SetText(const std::string& text);
    void SetText(const std::u16string& text);
    void Clear() { SetText(std::string()); }
    bool ReadOnly() const { return isReadOnly(); }
    void SetReadOnly(bool readOnly) { setReadOnly(readOnly); }
    // Shows "*" for each character.
    void SetPassword(bool password);
    void SelectAll() { selectAll(); }

private:
    void Fill(const QString& newText);
};

// Two arrows that count the number in an edit up and down; the edit's arrow keys do so,
// too. The edit takes any text: one that is no number counts from the last position.
class TUpDown : public TControlOf<QWidget> {
public:
    // Takes the edit's OnKeyDown.
    TUpDown(TWinControl* parent, const std::string& name, TEdit& associate);

    int Position() const { return FPosition; }
    // Writes the number into the edit. Any number will do; the arrows stay from 0 on.
    void SetPosition(int position);

private:
    void AddArrow(Qt::ArrowType arrow, int step);
    void Step(int step);
    TEdit& FAssociate;
    int FPosition = 0;
};

// An edit whose mask says which characters stand where; no mask lets everything in.
class TMaskEdit : public TEdit {
public:
    using TEdit::TEdit;
    void SetEditMask(const std::string& mask);
};

// Several lines of text, with "\n" between them whatever was set. OnChange fires as
// an edit's does.
class TMemo : public TControlOf<QPlainTextEdit> {
public:
    explicit TMemo(TWinControl* parent, const std::string& name = {});
    TEvent<> OnChange;

    std::string Text() const;
    void SetText(const std::string& text);
    void SetText(const std::u16string& text);
    void Clear() { SetText(std::string()); }
    bool Empty() const;
    // Whether the user has changed the text since it was last set.
    bool Modified() const { return FModified; }
    void SetModified(bool modified) { FModified = modified; }
    bool ReadOnly() const { return isReadOnly(); }
    void SetReadOnly(bool readOnly);
    void SelectAll() { selectAll(); }

    QSize sizeHint() const override;

protected:
    bool viewportEvent(QEvent* event) override;

private:
    QString Lines() const;
    void Fill(const QString& text);
    bool FModified = false;
    bool FFilling = false;
};

// OnClick fires whenever the state changes, by the user or by the program.
class TCheckBox : public TControlOf<QCheckBox> {
public:
    explicit TCheckBox(TWinControl* parent, const std::string& name = {}, const std::string& caption = {});
    TEvent<> OnClick;

    std::string Caption() const;
    // "&" shows as it is.
    void SetCaption(const std::string& caption);
    bool Checked() const { return isChecked(); }
    void SetChecked(bool checked) { setChecked(checked); }
};

// A date. It always holds one; the blank state only hides it, until the user picks or
// types a date or the program sets one. OnChange fires for the user's changes alone:
// a pick of the date that was hidden counts as one.
class TDatePicker : public TControlOf<QDateEdit> {
public:
    explicit TDatePicker(TWinControl* parent, const std::string& name = {});
    TEvent<> OnChange;

    // In days since 30 December 1899; the time of day is dropped. A date outside the
    // limits becomes the nearer limit. Setting one ends the blank state.
    double Date() const;
    void SetDate(double date);
    void SetMinDate(double date);
    void SetMaxDate(double date);
    bool Blank() const { return FBlank; }
    void SetBlank(bool blank);

protected:
    QString textFromDateTime(const QDateTime& value) const override;
    QDateTime dateTimeFromText(const QString& text) const override;
    void focusInEvent(QFocusEvent* event) override;
    QValidator::State validate(QString& input, int& position) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void stepBy(int steps) override;

private:
    void Picked();
    void Fill(const std::function<void()>& change);
    void RefreshText();
    QDate FKnown;
    bool FBlank = false;
    bool FFilling = false;
};
