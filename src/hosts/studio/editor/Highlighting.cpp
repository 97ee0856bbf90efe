#include "hosts/studio/editor/Highlighting.h"

#include <Qsci/qscilexerbash.h>
#include <Qsci/qscilexercmake.h>
#include <Qsci/qscilexercpp.h>
#include <Qsci/qscilexercsharp.h>
#include <Qsci/qscilexercss.h>
#include <Qsci/qscilexerdiff.h>
#include <Qsci/qscilexerhtml.h>
#include <Qsci/qscilexerjava.h>
#include <Qsci/qscilexerjavascript.h>
#include <Qsci/qscilexerjson.h>
#include <Qsci/qscilexerlua.h>
#include <Qsci/qscilexermakefile.h>
#include <Qsci/qscilexermarkdown.h>
#include <Qsci/qscilexerpascal.h>
#include <Qsci/qscilexerperl.h>
#include <Qsci/qscilexerproperties.h>
#include <Qsci/qscilexerpython.h>
#include <Qsci/qscilexerruby.h>
#include <Qsci/qscilexersql.h>
#include <Qsci/qscilexertex.h>
#include <Qsci/qscilexerxml.h>
#include <Qsci/qscilexeryaml.h>

#include <QFileInfo>
#include <QFontDatabase>
#include <QPalette>

#include <array>
#include <string_view>

namespace {

template<class T> std::unique_ptr<QsciLexer> Make() {
    return std::make_unique<T>();
}

struct TLanguageRow {
    const char16_t* Name;
    std::unique_ptr<QsciLexer> (*MakeLexer)();
    // Lower-case extensions and whole file names, each between blanks.
    const char16_t* Files;
};

constexpr TLanguageRow Languages[] = {
    {u"C++", Make<QsciLexerCPP>, u" c cc cpp cxx c++ h hh hpp hxx ipp inl proto "},
    {u"C#", Make<QsciLexerCSharp>, u" cs "},
    {u"Java", Make<QsciLexerJava>, u" java kt "},
    {u"JavaScript", Make<QsciLexerJavaScript>, u" js mjs ts tsx jsx qml "},
    {u"JSON", Make<QsciLexerJSON>, u" json "},
    {u"Python", Make<QsciLexerPython>, u" py pyw pyi "},
    {u"Pascal", Make<QsciLexerPascal>, u" pas dpr dpk pp inc "},
    {u"HTML", Make<QsciLexerHTML>, u" html htm xhtml php "},
    {u"XML", Make<QsciLexerXML>, u" xml xsd xsl xslt svg ui qrc reqif "},
    {u"CSS", Make<QsciLexerCSS>, u" css qss "},
    {u"Markdown", Make<QsciLexerMarkdown>, u" md markdown "},
    {u"CMake", Make<QsciLexerCMake>, u" cmake cmakelists.txt "},
    {u"Makefile", Make<QsciLexerMakefile>, u" mk makefile gnumakefile "},
    {u"Shell", Make<QsciLexerBash>, u" sh bash zsh "},
    {u"SQL", Make<QsciLexerSQL>, u" sql "},
    {u"YAML", Make<QsciLexerYAML>, u" yml yaml .clang-format "},
    {u"Settings", Make<QsciLexerProperties>, u" ini conf cfg properties desktop .editorconfig toml "},
    {u"Perl", Make<QsciLexerPerl>, u" pl pm "},
    {u"Ruby", Make<QsciLexerRuby>, u" rb "},
    {u"Lua", Make<QsciLexerLua>, u" lua "},
    {u"TeX", Make<QsciLexerTeX>, u" tex sty "},
    {u"Diff", Make<QsciLexerDiff>, u" diff patch "},
};

struct TStyleRow {
    // A word of the style's description, in lower case.
    const char16_t* Word;
    QRgb Light;
    QRgb Dark;
    bool Bold;
};

// The first row whose word the description holds gives the colour.
constexpr TStyleRow Styles[] = {
    {u"inactive", 0x8A9099, 0x7D8590, false},
    {u"comment", 0x5F6B76, 0x8B98A5, false},
    {u"docstring", 0x5F6B76, 0x8B98A5, false},
    {u"triple", 0x2F7D32, 0x8CC98F, false},
    {u"unclosed", 0xB3261E, 0xF28B82, false},
    {u"error", 0xB3261E, 0xF28B82, false},
    {u"string", 0x2F7D32, 0x8CC98F, false},
    {u"character", 0x2F7D32, 0x8CC98F, false},
    {u"quoted", 0x2F7D32, 0x8CC98F, false},
    {u"heading", 0x1F5FA8, 0x7FB4F0, true},
    {u"header", 0x1F5FA8, 0x7FB4F0, true},
    {u"level", 0x1F5FA8, 0x7FB4F0, true},
    {u"keyword", 0x7A3E9D, 0xC79BE8, false},
    {u"reserved", 0x7A3E9D, 0xC79BE8, false},
    {u"pre-processor", 0x9A5B00, 0xE0B060, false},
    {u"preprocessor", 0x9A5B00, 0xE0B060, false},
    {u"number", 0xA8481A, 0xEFA07A, false},
    {u"class", 0x1F5FA8, 0x7FB4F0, false},
    {u"function", 0x1F5FA8, 0x7FB4F0, false},
    {u"tag", 0x1F5FA8, 0x7FB4F0, false},
    {u"section", 0x1F5FA8, 0x7FB4F0, true},
    {u"attribute", 0x9A5B00, 0xE0B060, false},
    {u"property", 0x1F5FA8, 0x7FB4F0, false},
    {u"key", 0x1F5FA8, 0x7FB4F0, false},
    {u"variable", 0x9A5B00, 0xE0B060, false},
    {u"entity", 0xA8481A, 0xEFA07A, false},
    {u"added", 0x2F7D32, 0x8CC98F, false},
    {u"removed", 0xB3261E, 0xF28B82, false},
    {u"code", 0x9A5B00, 0xE0B060, false},
    {u"link", 0x1F5FA8, 0x7FB4F0, false},
    {u"strong", 0, 0, true},
};

const TStyleRow* StyleFor(const QString& description) {
    const QString lower = description.toLower();
    for (const TStyleRow& row : Styles)
        if (lower.contains(QStringView(row.Word))) return &row;
    return nullptr;
}

} // namespace

TLanguage LanguageOf(const QString& fileName) {
    const QFileInfo file(fileName);
    const QString name = file.fileName().toLower();
    const QString suffix = file.suffix().toLower();
    for (const TLanguageRow& row : Languages) {
        const QStringView files(row.Files);
        const auto holds = [&](const QString& word) {
            return !word.isEmpty() && files.contains(QString(u' ' + word + u' '));
        };
        if (holds(name) || holds(suffix)) return {QString::fromUtf16(row.Name), row.MakeLexer()};
    }
    return {QStringLiteral("Plain text"), nullptr};
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

void ColorLexer(QsciLexer& lexer, const QPalette& palette) {
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const bool dark = IsDark(palette);
    lexer.setDefaultFont(font);
    lexer.setDefaultColor(palette.color(QPalette::Text));
    lexer.setDefaultPaper(palette.color(QPalette::Base));
    constexpr int lastStyle = 127;
    for (int style = 0; style <= lastStyle; ++style) {
        const QString description = lexer.description(style);
        if (description.isEmpty()) continue;
        const TStyleRow* row = StyleFor(description);
        QFont styleFont = font;
        styleFont.setBold(row && row->Bold);
        lexer.setFont(styleFont, style);
        lexer.setPaper(palette.color(QPalette::Base), style);
        const QRgb color = row ? (dark ? row->Dark : row->Light) : 0;
        lexer.setColor(color ? QColor::fromRgb(color) : palette.color(QPalette::Text), style);
    }
}
