// Highlighting of source files by their extension, in colours that suit a light or
// a dark palette.
#pragma once

#include <QString>

#include <memory>

class QPalette;
class QsciLexer;

struct TLanguage {
    // For the status bar, for example "C++".
    QString Name;
    // Empty for plain text.
    std::unique_ptr<QsciLexer> Lexer;
};

// The language of a file by its name.
TLanguage LanguageOf(const QString& fileName);

// Gives every style of the lexer its colour and the editor's font.
void ColorLexer(QsciLexer& lexer, const QPalette& palette);

// Whether text of this palette stands light on dark.
bool IsDark(const QPalette& palette);
