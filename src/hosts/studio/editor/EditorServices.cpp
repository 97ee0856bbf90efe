#include "hosts/studio/editor/EditorServices.h"

#include "contracts/Exceptions.h"
#include "hosts/studio/editor/EditorArea.h"
#include "hosts/studio/editor/SourceEdit.h"
#include "hosts/studio/editor/TabFrame.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/QtText.h"

#include <QFileInfo>
#include <QMenu>

#include <algorithm>
#include <map>

namespace {

using TEditorPointer = QPointer<TSourceEdit>;

TSourceEdit& Alive(const TEditorPointer& editor) {
    if (!editor) throw Exception("The file is closed.");
    return *editor;
}

TSourceEdit& Writable(const TEditorPointer& editor) {
    if (Alive(editor).isReadOnly()) throw Exception(FromQt(editor->Caption()) + " is read-only.");
    return *editor;
}

class TEditPosition : public IHostEditPosition {
public:
    explicit TEditPosition(TSourceEdit& editor)
        : FEditor(&editor) {}

    void InsertText(const std::string& utf8) override {
        TSourceEdit& editor = Writable(FEditor);
        const QByteArray bytes = QByteArray::fromStdString(utf8);
        editor.beginUndoAction();
        // Beside a selection and not in its place, as the cursor stands.
        const auto position =
            static_cast<unsigned long>(editor.SendScintilla(QsciScintillaBase::SCI_GETCURRENTPOS));
        editor.SendScintilla(QsciScintillaBase::SCI_INSERTTEXT, position, bytes.constData());
        editor.SendScintilla(QsciScintillaBase::SCI_GOTOPOS,
                             position + static_cast<unsigned long>(bytes.size()));
        editor.endUndoAction();
    }

private:
    TEditorPointer FEditor;
};

class TEditBuffer : public IHostEditBuffer {
public:
    explicit TEditBuffer(TSourceEdit& editor)
        : FEditor(&editor) {}

    std::shared_ptr<IHostEditPosition> Get_EditPosition() override {
        return std::make_shared<TEditPosition>(Alive(FEditor));
    }
    std::string Get_FileName() override {
        const TSourceEdit& editor = Alive(FEditor);
        return FromQt(editor.Path().isEmpty() ? editor.Caption() : editor.Path());
    }
    std::string Get_Text() override { return FromQt(Alive(FEditor).text()); }
    void Set_Text(const std::string& utf8) override { Writable(FEditor).ReplaceText(ToQt(utf8)); }

private:
    TEditorPointer FEditor;
};

class TEditView : public IHostEditView {
public:
    explicit TEditView(TSourceEdit& editor)
        : FEditor(&editor) {}

    std::shared_ptr<IHostEditBuffer> Get_Buffer() override {
        return std::make_shared<TEditBuffer>(Alive(FEditor));
    }
    void Paint() override {
        TSourceEdit& editor = Alive(FEditor);
        editor.ensureCursorVisible();
        editor.viewport()->update();
    }

private:
    TEditorPointer FEditor;
};

void BringUp(TEditorArea* area, const TEditorPointer& editor) {
    TSourceEdit& alive = Alive(editor);
    area->setCurrentWidget(&alive);
    alive.setFocus();
}

class TSourceEditor : public IHostSourceEditor {
public:
    TSourceEditor(TEditorArea& area, TSourceEdit& editor)
        : FArea(&area)
        , FEditor(&editor) {}

    std::shared_ptr<IHostEditView> GetEditView(int index) override {
        if (index != 0 || !FEditor) return {};
        return std::make_shared<TEditView>(*FEditor);
    }
    void Show() override { BringUp(FArea, FEditor); }

private:
    QPointer<TEditorArea> FArea;
    TEditorPointer FEditor;
};

class TModule : public IHostModule {
public:
    TModule(TEditorArea& area, TSourceEdit& editor)
        : FArea(&area)
        , FEditor(&editor) {}

    std::shared_ptr<IHostEditor> Get_CurrentEditor() override { return GetModuleFileEditor(0); }
    std::shared_ptr<IHostEditor> GetModuleFileEditor(int index) override {
        if (index != 0 || !FEditor) return {};
        return std::make_shared<TSourceEditor>(*FArea, *FEditor);
    }
    void Show() override { BringUp(FArea, FEditor); }

private:
    QPointer<TEditorArea> FArea;
    TEditorPointer FEditor;
};

} // namespace

std::shared_ptr<IHostModule> TModuleServices::Get_CurrentModule() {
    TSourceEdit* editor = FArea.TopEditor();
    return editor ? std::make_shared<TModule>(FArea, *editor) : nullptr;
}

std::shared_ptr<IHostModule> TModuleServices::FindModule(const std::string& fileName) {
    const QString path = ToQt(fileName);
    TSourceEdit* editor = FArea.FindEditor(path);
    if (!editor) {
        if (!QFileInfo(path).isFile()) return {};
        try {
            editor = &FArea.OpenFile(path);
        } catch (const Exception&) {
            // The contract answers a file that cannot be read as one that is not there.
            return {};
        }
    }
    return std::make_shared<TModule>(FArea, *editor);
}

std::shared_ptr<IHostEditBuffer> TEditorServices::Get_TopBuffer() {
    TSourceEdit* editor = FArea.TopEditor();
    return editor ? std::make_shared<TEditBuffer>(*editor) : nullptr;
}

std::shared_ptr<IHostTabFrame> TEditorServices::CreateTabFrame() {
    return std::make_shared<TTabFrame>(FArea);
}

void TEditorServices::RegisterActionList(int group, int position, TActionList& list,
                                         THostActionListFlags flags) {
    FLists.push_back({group, position, &list, flags});
    std::ranges::stable_sort(FLists, [](const TRegistered& a, const TRegistered& b) {
        return std::pair(a.Group, a.Position) < std::pair(b.Group, b.Position);
    });
}

// A category with a point in it hangs below the action whose category is the part
// before the point.
void TEditorServices::FillContextMenu(QMenu& menu) const {
    for (const TRegistered& registered : FLists) {
        if (!registered.List || !registered.Flags.test(alContextMenu)) continue;
        registered.List->UpdateIfReachable();
        std::map<std::string, QMenu*> groups;
        menu.addSeparator();
        for (TAction* action : registered.List->Actions()) {
            const std::string category = action->Category();
            const auto parent = groups.find(category.substr(0, category.find('.')));
            if (category.find('.') == std::string::npos) {
                if (!action->Visible()) continue;
                groups[category] = menu.addMenu(action->icon(), ToQt(action->Caption()));
            } else if (parent == groups.end()) {
                continue;
            } else if (action->Caption() == "-") {
                parent->second->addSeparator();
            } else {
                parent->second->addAction(action);
            }
        }
    }
}
