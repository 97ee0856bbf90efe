// One source file in an editor widget: text, highlighting, the file behind it.
//
// The widget stands on QScintilla, which is under the GNU General Public License.
// Only this folder links it: the add-in and everything under it know the editor
// through contracts/EditorServices.h alone.
#pragma once

#include "contracts/Object.h"
#include "hosts/studio/editor/SourceFile.h"

#include <Qsci/qsciscintilla.h>

#include <functional>
#include <memory>

class QMenu;

class TSourceEdit : public QsciScintilla, public IDragSource {
public:
    // An empty text that no file holds yet; caption is for its tab.
    TSourceEdit(const QString& caption, QWidget* parent);
    ~TSourceEdit() override;

    // Reads the file into the editor. Raises Exception as ReadSourceFile does; the
    // editor is then as it was.
    void Load(const QString& path);

    // Writes the text to path, which is from then on the editor's file. Raises
    // Exception when that fails; text and mark of change are then as they were.
    void Save(const QString& path);

    // Empty for a text never saved.
    const QString& Path() const { return FPath; }
    // The file's name, or what the tab of a text never saved says.
    QString Caption() const;
    const QString& LanguageName() const { return FLanguageName; }
    TEncoding Encoding() const { return FEncoding; }
    TLineEnd LineEnd() const;

    // Whether another program has written or removed the file since Load or Save.
    bool ChangedOnDisk() const;

    // Replaces the whole text as one undo step and keeps the cursor's place.
    void ReplaceText(const QString& text);

    TObject* DragObject() override;

    // Adds further entries to the context menu, which is about to open.
    std::function<void(QMenu&)> OnContextMenu;

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void SetUp();
    void ApplyColors();
    void FollowFile(const QString& path);
    void AdjustLineNumbers();

    QString FPath;
    QString FUnsavedCaption;
    QString FLanguageName;
    QDateTime FFileTime;
    TEncoding FEncoding = TEncoding::Utf8;
    std::unique_ptr<QsciLexer> FLexer;
    std::unique_ptr<TEditTextDragObject> FDragObject;
};
