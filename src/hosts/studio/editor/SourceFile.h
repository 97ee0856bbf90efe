// Reads and writes text files without harm: what is read and written back unchanged
// gives the same bytes, whatever encoding, byte-order mark and line ends they have.
#pragma once

#include <QDateTime>
#include <QString>

enum class TEncoding { Utf8, Utf8Bom, Utf16Little, Utf16Big, Latin1 };
enum class TLineEnd { Unix, Dos, Mac };

struct TSourceText {
    // With the line ends of the file.
    QString Text;
    TEncoding Encoding = TEncoding::Utf8;
    // The one that most lines have, for new lines.
    TLineEnd LineEnd = TLineEnd::Unix;
};

// Raises Exception for a file that cannot be read, is no text or is larger than
// MaximumSourceSize.
TSourceText ReadSourceFile(const QString& path);

// Replaces the file as a whole and keeps its rights and a link to it. Raises Exception
// when that fails; the file is then as it was. A text that Latin-1 cannot hold goes
// out in UTF-8. Gives the encoding written.
TEncoding WriteSourceFile(const QString& path, const QString& text, TEncoding encoding);

inline constexpr qint64 MaximumSourceSize = 64 * 1024 * 1024;

// For the user: "UTF-8 with BOM", "CRLF".
QString EncodingName(TEncoding encoding);
QString LineEndName(TLineEnd lineEnd);
