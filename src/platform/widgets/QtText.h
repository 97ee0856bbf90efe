// Conversions between the 8-bit text of the logic (UTF-8) and Qt's. For the
// component layer and hosts only; logic never includes it.
#pragma once

#include <string>
#include <string_view>

#include <QCollator>
#include <QString>
#include <QTextDocument>

inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

// A tooltip of exactly this text, even where it looks like markup.
inline QString ToToolTip(std::string_view text) {
    const QString plain = ToQt(text);
    return Qt::mightBeRichText(plain) ? QStringLiteral("<qt>%1</qt>").arg(plain.toHtmlEscaped()) : plain;
}

inline std::string FromQt(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

// The order of sorted lists and trees: alphabetical by the user's language, without
// regard to case.
inline QCollator TextOrder() {
    QCollator order;
    order.setCaseSensitivity(Qt::CaseInsensitive);
    return order;
}
