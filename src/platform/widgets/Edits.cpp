#include "platform/widgets/Edits.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include <QCalendarWidget>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/IconSheets.h"
#include "platform/widgets/look/ImageList.h"

TLabel::TLabel(TWinControl* parent, const std::string& name, const std::string& caption)
    : QLabel(parent ? &parent->ClientArea() : nullptr) {
    setTextFormat(Qt::PlainText);
    Attach(parent, name);
    SetCaption(caption);
}

void TLabel::SetCaption(const std::string& caption) {
    FCaption = caption;
    ShowCaption();
}

void TLabel::SetShowAccelChar(bool show) {
    FShowAccelChar = show;
    ShowCaption();
}

void TLabel::SetFocusControl(TWinControl& control) {
    setBuddy(&control.Widget());
    ShowCaption();
}

// Without a buddy every letter shows as it is.
void TLabel::ShowCaption() {
    QString text = ToQt(FCaption);
    if (!FShowAccelChar && buddy()) text.replace(u'&', QStringLiteral("&&"));
    setText(text);
}

void TLabel::SetWordWrap(bool wrap) {
    setWordWrap(wrap);
    setAlignment(wrap ? Qt::AlignLeft | Qt::AlignTop : Qt::AlignLeft | Qt::AlignVCenter);
}

int TLabel::TextWidth() const {
    return fontMetrics().horizontalAdvance(ToQt(FCaption));
}

TShape::TShape(TWinControl* parent, const std::string& name)
    : QWidget(parent ? &parent->ClientArea() : nullptr) {
    Attach(parent, name);
}

void TShape::ApplyColor() {
    setBackgroundRole(RoleOf(Color()));
}

void TShape::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor outline = palette().color(foregroundRole());
    outline.setAlphaF(0.4f);
    painter.fillRect(rect(), palette().color(backgroundRole()));
    painter.setPen(outline);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

TImage::TImage(TWinControl* parent, const std::string& name)
    : QLabel(parent ? &parent->ClientArea() : nullptr) {
    setAlignment(Qt::AlignCenter);
    Attach(parent, name);
}

void TImage::SetPicture(const std::string& iconName, int size) {
    setPixmap(NamedIcon(iconName).pixmap(QSize(size, size), devicePixelRatio()));
}

void TImage::SetBackground(const std::string& name) {
    FBackground = name;
    update();
}

void TImage::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (FBackground.empty()) return;
    QPainter painter(this);
    PaintPicture(painter, FBackground, rect(), IconColorsFor(palette()));
}

TEdit::TEdit(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    connect(this, &QLineEdit::textChanged, this, [this] { Fire(OnChange); });
}

std::string TEdit::Text() const {
    return FromQt(text());
}
void TEdit::SetText(const std::string& text) {
    Fill(ToQt(text));
}
void TEdit::SetText(const std::u16string& text) {
    Fill(ToQt(text));
}
void TEdit::Fill(const QString& newText) {
    if (newText == text()) return;
    setText(newText);
    // A long text shows its beginning.
    setCursorPosition(0);
}

void TEdit::SetPassword(bool password) {
    setEchoMode(password ? QLineEdit::Password : QLineEdit::Normal);
    setStyleSheet(password ? QStringLiteral("QLineEdit { lineedit-password-character: 42; }") : QString());
}

TUpDown::TUpDown(TWinControl* parent, const std::string& name, TEdit& associate)
    : TControlOf(parent, name)
    , FAssociate(associate) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    AddArrow(Qt::UpArrow, 1);
    AddArrow(Qt::DownArrow, -1);
    setFixedSize(18, associate.sizeHint().height());
    FAssociate.OnKeyDown = [this](TKey key, TShiftState, bool& handled) {
        handled = key == TKey::Up || key == TKey::Down;
        if (handled) Step(key == TKey::Up ? 1 : -1);
    };
}

void TUpDown::AddArrow(Qt::ArrowType arrow, int step) {
    auto* button = new QToolButton(this);
    button->setObjectName(objectName() + (step > 0 ? QStringLiteral("Up") : QStringLiteral("Down")));
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, step] { Step(step); });
}

void TUpDown::SetPosition(int position) {
    FPosition = position;
    FAssociate.SetText(std::to_string(position));
}

void TUpDown::Step(int step) {
    bool isNumber = false;
    const int written = FAssociate.text().toInt(&isNumber);
    const std::int64_t next = static_cast<std::int64_t>(isNumber ? written : FPosition) + step;
    SetPosition(static_cast<int>(std::clamp<std::int64_t>(next, 0, std::numeric_limits<int>::max())));
}

void TMaskEdit::SetEditMask(const std::string& mask) {
    setInputMask(ToQt(mask));
}

TMemo::TMemo(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (!FFilling) FModified = true;
        Fire(OnChange);
    });
}

std::string TMemo::Text() const {
    return FromQt(Lines());
}
void TMemo::SetText(const std::string& text) {
    Fill(ToQt(text));
}
void TMemo::SetText(const std::u16string& text) {
    Fill(ToQt(text));
}
bool TMemo::Empty() const {
    return document()->isEmpty();
}

// Qt's own plain text turns blanks that must not break into others.
QString TMemo::Lines() const {
    QString text = document()->toRawText();
    for (QChar& letter : text)
        if (letter == QChar::ParagraphSeparator || letter == QChar::LineSeparator) letter = QLatin1Char('\n');
    return text;
}

void TMemo::Fill(const QString& text) {
    FModified = false;
    if (text == Lines()) return;
    FFilling = true;
    setPlainText(text);
    FFilling = false;
}

void TMemo::SetReadOnly(bool readOnly) {
    setReadOnly(readOnly);
    if (readOnly) setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

QSize TMemo::sizeHint() const {
    return QSize(QPlainTextEdit::sizeHint().width(), fontMetrics().lineSpacing() * 4 + 2 * frameWidth());
}

bool TMemo::viewportEvent(QEvent* event) {
    if (HandleViewportEvent(*event)) {
        event->accept();
        return true;
    }
    return TControlOf::viewportEvent(event);
}

TCheckBox::TCheckBox(TWinControl* parent, const std::string& name, const std::string& caption)
    : TControlOf(parent, name) {
    SetCaption(caption);
    connect(this, &QCheckBox::toggled, this, [this] { Fire(OnClick); });
}

std::string TCheckBox::Caption() const {
    return FromQt(text().replace(QStringLiteral("&&"), QStringLiteral("&")));
}

void TCheckBox::SetCaption(const std::string& caption) {
    setText(ToQt(caption).replace(QStringLiteral("&"), QStringLiteral("&&")));
}

namespace {

const QDate DateOrigin(1899, 12, 30);

QDate ToDate(double date) {
    return DateOrigin.addDays(static_cast<qint64>(std::floor(date)));
}

double FromDate(const QDate& date) {
    return static_cast<double>(DateOrigin.daysTo(date));
}

} // namespace

TDatePicker::TDatePicker(TWinControl* parent, const std::string& name)
    : TControlOf(parent, name) {
    setCalendarPopup(true);
    setFocusPolicy(Qt::StrongFocus);
    setDate(QDate::currentDate());
    FKnown = date();
    // Enter tells of a change where there is none.
    connect(this, &QDateEdit::dateChanged, this, [this] {
        if (!FFilling && date() != FKnown) Picked();
    });
    // A pick of the date that the blank hides changes no date.
    for (const auto signal : {&QCalendarWidget::clicked, &QCalendarWidget::activated})
        connect(calendarWidget(), signal, this, [this] {
            if (FBlank) Picked();
        });
}

double TDatePicker::Date() const {
    return FromDate(date());
}

void TDatePicker::SetDate(double date) {
    Fill([&] { setDate(std::clamp(ToDate(date), minimumDate(), maximumDate())); });
    SetBlank(false);
}

void TDatePicker::SetMinDate(double date) {
    Fill([&] { setMinimumDate(ToDate(date)); });
}

void TDatePicker::SetMaxDate(double date) {
    Fill([&] { setMaximumDate(ToDate(date)); });
}

void TDatePicker::Fill(const std::function<void()>& change) {
    FFilling = true;
    change();
    FFilling = false;
    FKnown = date();
    RefreshText();
}

void TDatePicker::SetBlank(bool blank) {
    FBlank = blank;
    RefreshText();
}

void TDatePicker::RefreshText() {
    const QSignalBlocker blocker(lineEdit());
    lineEdit()->setText(textFromDateTime(dateTime()));
}

void TDatePicker::Picked() {
    FKnown = date();
    SetBlank(false);
    Fire(OnChange);
}

QString TDatePicker::textFromDateTime(const QDateTime& value) const {
    return FBlank ? QString() : QDateEdit::textFromDateTime(value);
}

QValidator::State TDatePicker::validate(QString& input, int& position) const {
    if (FBlank && input.isEmpty()) return QValidator::Acceptable;
    return QDateEdit::validate(input, position);
}

QDateTime TDatePicker::dateTimeFromText(const QString& text) const {
    return FBlank ? dateTime() : QDateEdit::dateTimeFromText(text);
}

// A blank has no section to select.
void TDatePicker::focusInEvent(QFocusEvent* event) {
    if (FBlank)
        QAbstractSpinBox::focusInEvent(event);
    else
        QDateEdit::focusInEvent(event);
}

void TDatePicker::keyPressEvent(QKeyEvent* event) {
    const bool types = !event->text().isEmpty() && event->text().at(0).isDigit();
    if (FBlank && !isReadOnly() && types) {
        SetBlank(false);
        setSelectedSection(sectionAt(0));
        const QDate before = date();
        QDateEdit::keyPressEvent(event);
        if (date() == before) Picked();
        return;
    }
    QDateEdit::keyPressEvent(event);
}

void TDatePicker::mousePressEvent(QMouseEvent* event) {
    QDateEdit::mousePressEvent(event);
    if (FBlank) RefreshText();
}

// Turning the wheel over a page that scrolls must not change the values on it.
void TDatePicker::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QDateEdit::wheelEvent(event);
    else
        event->ignore();
}

// The first step from a blank shows the date that it hid.
void TDatePicker::stepBy(int steps) {
    if (FBlank)
        Picked();
    else
        QDateEdit::stepBy(steps);
}
