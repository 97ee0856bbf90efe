#include "hosts/studio/editor/SourceEdit.h"

#include "hosts/studio/editor/Highlighting.h"

#include <Qsci/qscilexer.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QMenu>

namespace {

constexpr int NumberMargin = 0;
constexpr int FoldMargin = 2;
constexpr int FoldMarginWidth = 14;
constexpr int TabColumns = 4;
constexpr int LineSpacing = 1;

constexpr int FoldMarks[] = {QsciScintilla::SC_MARKNUM_FOLDEROPEN, QsciScintilla::SC_MARKNUM_FOLDER,
                             QsciScintilla::SC_MARKNUM_FOLDEROPENMID, QsciScintilla::SC_MARKNUM_FOLDEREND};

QColor Mix(const QColor& a, const QColor& b, double shareOfB) {
    const auto mix = [shareOfB](int x, int y) { return static_cast<int>(x + (y - x) * shareOfB); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

} // namespace

TSourceEdit::TSourceEdit(const QString& caption, QWidget* parent)
    : QsciScintilla(parent)
    , FUnsavedCaption(caption) {
    SetUp();
    FollowFile({});
}

TSourceEdit::~TSourceEdit() {
    // The base class still refers to the lexer while it goes.
    setLexer(nullptr);
}

void TSourceEdit::SetUp() {
    setUtf8(true);
    setFrameShape(QFrame::NoFrame);
    setTabWidth(TabColumns);
    setIndentationsUseTabs(false);
    setAutoIndent(true);
    setBackspaceUnindents(true);
    setIndentationGuides(true);
    setBraceMatching(QsciScintilla::SloppyBraceMatch);
    setCaretLineVisible(true);
    setMarginLineNumbers(NumberMargin, true);
    setExtraAscent(LineSpacing);
    setExtraDescent(LineSpacing);
    setScrollWidth(1);
    setScrollWidthTracking(true);
    setAccessibleName(QStringLiteral("Source text"));
    connect(this, &QsciScintilla::linesChanged, this, [this] { AdjustLineNumbers(); });
}

void TSourceEdit::Load(const QString& path) {
    const TSourceText source = ReadSourceFile(path);
    FEncoding = source.Encoding;
    setEolMode(source.LineEnd == TLineEnd::Dos   ? QsciScintilla::EolWindows
               : source.LineEnd == TLineEnd::Mac ? QsciScintilla::EolMac
                                                 : QsciScintilla::EolUnix);
    setReadOnly(false);
    setText(source.Text);
    SendScintilla(SCI_EMPTYUNDOBUFFER);
    setReadOnly(!QFileInfo(path).isWritable());
    FollowFile(path);
    setModified(false);
}

void TSourceEdit::Save(const QString& path) {
    FEncoding = WriteSourceFile(path, text(), FEncoding);
    setReadOnly(false);
    FollowFile(path);
    setModified(false);
}

void TSourceEdit::FollowFile(const QString& path) {
    FPath = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    FFileTime = FPath.isEmpty() ? QDateTime() : QFileInfo(FPath).lastModified();
    TLanguage language = LanguageOf(FPath);
    setLexer(language.Lexer.get());
    FLexer = std::move(language.Lexer);
    FLanguageName = language.Name;
    setFolding(FLexer ? QsciScintilla::PlainFoldStyle : QsciScintilla::NoFoldStyle, FoldMargin);
    setMarginWidth(FoldMargin, FLexer ? FoldMarginWidth : 0);
    markerDefine(QsciScintilla::DownTriangle, SC_MARKNUM_FOLDEROPEN);
    markerDefine(QsciScintilla::RightTriangle, SC_MARKNUM_FOLDER);
    markerDefine(QsciScintilla::DownTriangle, SC_MARKNUM_FOLDEROPENMID);
    markerDefine(QsciScintilla::RightTriangle, SC_MARKNUM_FOLDEREND);
    ApplyColors();
}

QString TSourceEdit::Caption() const {
    return FPath.isEmpty() ? FUnsavedCaption : QFileInfo(FPath).fileName();
}

TLineEnd TSourceEdit::LineEnd() const {
    switch (eolMode()) {
    case QsciScintilla::EolWindows:
        return TLineEnd::Dos;
    case QsciScintilla::EolMac:
        return TLineEnd::Mac;
    default:
        return TLineEnd::Unix;
    }
}

bool TSourceEdit::ChangedOnDisk() const {
    return !FPath.isEmpty() && QFileInfo(FPath).lastModified() != FFileTime;
}

void TSourceEdit::ReplaceText(const QString& text) {
    int line = 0;
    int column = 0;
    getCursorPosition(&line, &column);
    const int firstLine = firstVisibleLine();
    beginUndoAction();
    selectAll();
    replaceSelectedText(text);
    endUndoAction();
    line = qMin(line, lines() - 1);
    QString lineText = this->text(line);
    while (lineText.endsWith(u'\n') || lineText.endsWith(u'\r'))
        lineText.chop(1);
    setCursorPosition(line, qMin(column, static_cast<int>(lineText.size())));
    setFirstVisibleLine(firstLine);
}

TObject* TSourceEdit::DragObject() {
    const QString name = FPath.isEmpty() ? FUnsavedCaption : FPath;
    FDragObject = std::make_unique<TEditTextDragObject>(selectedText().toStdString(), name.toStdString());
    return FDragObject.get();
}

void TSourceEdit::AdjustLineNumbers() {
    constexpr int fewestDigits = 3;
    const auto digits = qMax<qsizetype>(fewestDigits, QString::number(lines()).size());
    setMarginWidth(NumberMargin, QString(digits + 1, u'8'));
}

void TSourceEdit::ApplyColors() {
    const QPalette colors = palette();
    const QColor paper = colors.color(QPalette::Base);
    const QColor ink = colors.color(QPalette::Text);
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setFont(font);
    setPaper(paper);
    setColor(ink);
    if (FLexer) {
        ColorLexer(*FLexer, colors);
        // Styles set on the lexer reach the text when it is set again.
        setLexer(FLexer.get());
    }
    const QColor margin = Mix(paper, ink, 0.03);
    setMarginsFont(font);
    setMarginsBackgroundColor(margin);
    setMarginsForegroundColor(Mix(paper, ink, 0.45));
    setFoldMarginColors(margin, margin);
    for (const int mark : FoldMarks) {
        setMarkerForegroundColor(margin, mark);
        setMarkerBackgroundColor(Mix(paper, ink, 0.45), mark);
    }
    setCaretForegroundColor(ink);
    setCaretLineBackgroundColor(Mix(paper, ink, 0.05));
    setSelectionBackgroundColor(colors.color(QPalette::Highlight));
    setSelectionForegroundColor(colors.color(QPalette::HighlightedText));
    setIndentationGuidesForegroundColor(Mix(paper, ink, 0.2));
    setIndentationGuidesBackgroundColor(paper);
    setMatchedBraceBackgroundColor(Mix(paper, colors.color(QPalette::Highlight), 0.3));
    setMatchedBraceForegroundColor(ink);
    setUnmatchedBraceBackgroundColor(paper);
    AdjustLineNumbers();
}

void TSourceEdit::changeEvent(QEvent* event) {
    QsciScintilla::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ApplyColors();
}

void TSourceEdit::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    if (OnContextMenu) OnContextMenu(*menu);
    menu->exec(event->globalPos());
    event->accept();
}
