#include "hosts/studio/editor/SourceFile.h"

#include "contracts/Exceptions.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>

namespace {

struct TMark {
    TEncoding Encoding;
    QByteArray Bytes;
};

const TMark& MarkOf(TEncoding encoding) {
    static const TMark marks[] = {{TEncoding::Utf8Bom, QByteArrayLiteral("\xEF\xBB\xBF")},
                                  {TEncoding::Utf16Little, QByteArrayLiteral("\xFF\xFE")},
                                  {TEncoding::Utf16Big, QByteArrayLiteral("\xFE\xFF")},
                                  {TEncoding::Utf8, {}}};
    for (const TMark& mark : marks)
        if (mark.Encoding == encoding) return mark;
    return marks[3];
}

QStringConverter::Encoding QtEncoding(TEncoding encoding) {
    switch (encoding) {
    case TEncoding::Utf16Little:
        return QStringConverter::Utf16LE;
    case TEncoding::Utf16Big:
        return QStringConverter::Utf16BE;
    case TEncoding::Latin1:
        return QStringConverter::Latin1;
    default:
        return QStringConverter::Utf8;
    }
}

// Empty when the bytes are not of that encoding.
std::optional<QString> Decode(const QByteArray& bytes, TEncoding encoding) {
    QStringDecoder decoder(QtEncoding(encoding),
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) return std::nullopt;
    return text;
}

// Empty when the encoding lacks a character of the text.
std::optional<QByteArray> Encode(const QString& text, TEncoding encoding) {
    const auto beyondLatin1 = [](QChar c) { return c.unicode() > 0xFF; };
    if (encoding == TEncoding::Latin1 && std::ranges::any_of(text, beyondLatin1)) return std::nullopt;
    QStringEncoder encoder(QtEncoding(encoding), QStringConverter::Flag::Stateless);
    QByteArray bytes = encoder.encode(text);
    if (encoder.hasError()) return std::nullopt;
    return MarkOf(encoding).Bytes + bytes;
}

TLineEnd MostFrequentLineEnd(const QString& text) {
    const auto dos = text.count(QStringLiteral("\r\n"));
    const auto unixEnds = text.count(u'\n') - dos;
    const auto mac = text.count(u'\r') - dos;
    if (dos > unixEnds && dos >= mac) return TLineEnd::Dos;
    return mac > unixEnds ? TLineEnd::Mac : TLineEnd::Unix;
}

[[noreturn]] void Fail(const QString& path, const QString& what) {
    throw Exception(QStringLiteral("%1 %2").arg(path, what).toStdString());
}

QByteArray ReadBytes(const QString& path) {
    QFile file(path);
    if (QFileInfo(path).isDir()) Fail(path, QStringLiteral("is a folder."));
    if (!file.open(QIODevice::ReadOnly))
        Fail(path, QStringLiteral("cannot be opened: %1.").arg(file.errorString()));
    if (file.size() > MaximumSourceSize) Fail(path, QStringLiteral("is too large for the editor."));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        Fail(path, QStringLiteral("cannot be read: %1.").arg(file.errorString()));
    return bytes;
}

TSourceText DecodeFile(const QString& path, const QByteArray& bytes) {
    for (const TEncoding encoding : {TEncoding::Utf8Bom, TEncoding::Utf16Little, TEncoding::Utf16Big}) {
        const QByteArray& mark = MarkOf(encoding).Bytes;
        if (!bytes.startsWith(mark)) continue;
        if (const auto text = Decode(bytes.mid(mark.size()), encoding); text && !text->contains(QChar::Null))
            return {*text, encoding, {}};
    }
    if (bytes.contains('\0')) Fail(path, QStringLiteral("is not a text file."));
    if (const auto text = Decode(bytes, TEncoding::Utf8)) return {*text, TEncoding::Utf8, {}};
    return {QString::fromLatin1(bytes), TEncoding::Latin1, {}};
}

} // namespace

TSourceText ReadSourceFile(const QString& path) {
    TSourceText source = DecodeFile(path, ReadBytes(path));
    source.LineEnd = MostFrequentLineEnd(source.Text);
    return source;
}

TEncoding WriteSourceFile(const QString& path, const QString& text, TEncoding encoding) {
    auto bytes = Encode(text, encoding);
    if (!bytes && encoding == TEncoding::Latin1) {
        encoding = TEncoding::Utf8;
        bytes = Encode(text, encoding);
    }
    if (!bytes) Fail(path, QStringLiteral("cannot be saved: the text is damaged."));

    QSaveFile file(path);
    // In a folder that takes no new file, the file itself may still be writable.
    file.setDirectWriteFallback(true);
    // Without the flush a commit does not see that the last bytes found no room.
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.flush() ||
        !file.commit())
        Fail(path, QStringLiteral("cannot be saved: %1.").arg(file.errorString()));
    return encoding;
}

QString EncodingName(TEncoding encoding) {
    switch (encoding) {
    case TEncoding::Utf8:
        return QStringLiteral("UTF-8");
    case TEncoding::Utf8Bom:
        return QStringLiteral("UTF-8 with BOM");
    case TEncoding::Utf16Little:
        return QStringLiteral("UTF-16 LE");
    case TEncoding::Utf16Big:
        return QStringLiteral("UTF-16 BE");
    case TEncoding::Latin1:
        return QStringLiteral("Latin-1");
    }
    return {};
}

QString LineEndName(TLineEnd lineEnd) {
    switch (lineEnd) {
    case TLineEnd::Unix:
        return QStringLiteral("LF");
    case TLineEnd::Dos:
        return QStringLiteral("CRLF");
    case TLineEnd::Mac:
        return QStringLiteral("CR");
    }
    return {};
}
