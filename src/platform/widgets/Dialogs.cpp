#include "platform/widgets/Dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>

#include "platform/widgets/QtText.h"

namespace {

QMessageBox::StandardButtons ButtonSet(TMessageButtons buttons) {
    switch (buttons) {
    case TMessageButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case TMessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case TMessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::StandardButton ButtonOf(TMessageResult result) {
    switch (result) {
    case TMessageResult::Ok:
        return QMessageBox::Ok;
    case TMessageResult::Cancel:
        return QMessageBox::Cancel;
    case TMessageResult::Yes:
        return QMessageBox::Yes;
    case TMessageResult::No:
        return QMessageBox::No;
    default:
        return QMessageBox::NoButton;
    }
}

TMessageResult ResultOf(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return TMessageResult::Yes;
    case QMessageBox::No:
        return TMessageResult::No;
    case QMessageBox::Cancel:
        return TMessageResult::Cancel;
    default:
        return TMessageResult::Ok;
    }
}

QMessageBox::Icon IconOf(TMessageIcon icon) {
    switch (icon) {
    case TMessageIcon::Information:
        return QMessageBox::Information;
    case TMessageIcon::Warning:
        return QMessageBox::Warning;
    case TMessageIcon::Error:
        return QMessageBox::Critical;
    case TMessageIcon::Question:
        return QMessageBox::Question;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButton EscapeButton(TMessageButtons buttons) {
    switch (buttons) {
    case TMessageButtons::Ok:
        return QMessageBox::Ok;
    case TMessageButtons::YesNo:
        return QMessageBox::No;
    default:
        return QMessageBox::Cancel;
    }
}

// Qt takes the patterns from the last parentheses, separated by blanks.
QString QtFilter(const std::string& filter) {
    const QStringList parts = ToQt(filter).split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString label = parts[i].section(u'(', 0, 0).trimmed();
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        filters.append(QStringLiteral("%1 (%2)").arg(label, patterns));
    }
    return filters.join(QStringLiteral(";;"));
}

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return FromQt(QDir::toNativeSeparators(path));
}

} // namespace

TMessageResult TNativeDialogs::ShowMessage(const TMessage& message) {
    QMessageBox box(IconOf(message.Icon), ToQt(message.Caption), ToQt(message.Text),
                    ButtonSet(message.Buttons), QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(EscapeButton(message.Buttons));
    if (message.Default != TMessageResult::None) box.setDefaultButton(ButtonOf(message.Default));
    return ResultOf(box.exec());
}

void TNativeDialogs::ShowError(const std::string& text) {
    QMessageBox box(QMessageBox::Critical, QGuiApplication::applicationDisplayName(), ToQt(text),
                    QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

std::optional<std::string> TNativeDialogs::OpenFile(const TFileQuestion& question) {
    return Chosen(QFileDialog::getOpenFileName(QApplication::activeWindow(), ToQt(question.Title),
                                               ToQt(question.Start), QtFilter(question.Filter)));
}

std::optional<std::string> TNativeDialogs::OpenPicture(const TFileQuestion& question) {
    return OpenFile(question);
}

std::optional<std::string> TNativeDialogs::SaveFile(const TFileQuestion& question) {
    return Chosen(QFileDialog::getSaveFileName(QApplication::activeWindow(), ToQt(question.Title),
                                               ToQt(question.Start), QtFilter(question.Filter)));
}

std::optional<TColor> TNativeDialogs::PickColor(TColor current) {
    const QColor color = QColorDialog::getColor(QColor(current.Red(), current.Green(), current.Blue()),
                                                QApplication::activeWindow());
    if (!color.isValid()) return std::nullopt;
    return TColor::Rgb(static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                       static_cast<std::uint8_t>(color.blue()));
}
