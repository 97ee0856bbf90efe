#include "platform/widgets/Actions.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

TAction::TAction(TActionList& list, const std::string& name)
    : QAction(&list)
    , FList(list) {
    SetName(name);
    list.FActions.push_back(this);
    for (QObject* owner = list.parent(); owner; owner = owner->parent())
        if (auto* widget = dynamic_cast<QWidget*>(owner)) {
            widget->addAction(this);
            break;
        }
    connect(this, &QAction::triggered, this, [this] { Execute(); });
}

TAction::~TAction() {
    std::erase(FList.FActions, this);
}

void TAction::SetCaption(const std::string& caption) {
    FCaption = caption;
    ShowTexts();
}

void TAction::SetHint(const std::string& hint) {
    FHint = hint;
    ShowTexts();
}

// A button without a caption is known by the hint.
void TAction::ShowTexts() {
    setText(ToQt(FCaption.empty() ? FHint : FCaption));
    setIconText(ToQt(FHint.empty() ? FCaption : FHint).remove(u'&'));
    const QString keys = shortcut().toString(QKeySequence::NativeText);
    std::string tip = FHint.empty() ? FromQt(ToQt(FCaption).remove(u'&')) : FHint;
    if (!keys.isEmpty()) tip += " (" + FromQt(keys) + ")";
    setToolTip(ToToolTip(tip));
}

void TAction::SetImageIndex(int index) {
    FImageIndex = index;
    setIcon(FList.Images() && index >= 0 ? FList.Images()->Icon(index) : QIcon());
}

void TAction::SetShortCut(const std::string& keys) {
    setShortcut(QKeySequence::fromString(ToQt(keys), QKeySequence::PortableText));
    ShowTexts();
}

void TAction::SetEnabled(bool enabled) {
    FEnabled = enabled;
    setEnabled(enabled);
}

void TAction::SetChecked(bool checked) {
    setCheckable(true);
    setChecked(checked);
}

bool TAction::Execute() {
    Update();
    if (!FEnabled) return false;
    if (OnExecute)
        Fire(OnExecute);
    else
        ExecuteTarget();
    return OnExecute || HasTarget();
}

void TAction::Update() {
    if (!OnUpdate) return;
    const TEvent<> handler = OnUpdate;
    Application().Dispatch(this, [this, &handler] {
        try {
            handler();
            FUpdateFailure.clear();
        } catch (const std::exception& failure) {
            if (FUpdateFailure == failure.what()) return;
            FUpdateFailure = failure.what();
            throw;
        }
    });
}

TActionList::TActionList(TComponent& owner, const std::string& name)
    : QObject(&owner.Object()) {
    SetName(name);
    Application().AddActionList(*this);
}

TActionList::~TActionList() {
    Application().RemoveActionList(*this);
    while (!FActions.empty())
        std::unique_ptr<TAction>(FActions.back()).reset();
}

void TActionList::SetImages(const TImageList* images) {
    FImages = images;
    for (TAction* action : FActions)
        action->SetImageIndex(action->ImageIndex());
}

TAction* TActionList::Find(const std::string& name) const {
    const auto found = std::find_if(FActions.begin(), FActions.end(),
                                    [&](const TAction* action) { return action->Name() == name; });
    return found == FActions.end() ? nullptr : *found;
}

void TActionList::UpdateIfReachable() {
    const QWidget* owner = nullptr;
    for (QObject* object = parent(); object && !owner; object = object->parent())
        owner = dynamic_cast<QWidget*>(object);
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && (!owner || owner->window() != modal)) return;
    const std::vector<TAction*> actions = FActions;
    for (TAction* action : actions)
        if (std::find(FActions.begin(), FActions.end(), action) != FActions.end()) action->Update();
}

void TActionList::BindShortCuts(TWinControl& control) {
    for (TAction* action : FActions)
        control.Widget().addAction(action);
}

TEditAction::TEditAction(TActionList& list, const std::string& name, TEditCommand command)
    : TAction(list, name)
    , FCommand(command) {}

namespace {

// The two kinds of edit controls name their operations alike and ask alike.
template<class Edit> bool HasSelection(const Edit& edit) {
    if constexpr (std::is_same_v<Edit, QLineEdit>)
        return edit.hasSelectedText();
    else
        return edit.textCursor().hasSelection();
}

template<class Edit> bool CanUndo(const Edit& edit) {
    if constexpr (std::is_same_v<Edit, QLineEdit>)
        return edit.isUndoAvailable();
    else
        return edit.document()->isUndoAvailable();
}

template<class Edit> bool CanRun(const Edit& edit, TEditCommand command) {
    switch (command) {
    case TEditCommand::Cut:
    case TEditCommand::Delete:
        return HasSelection(edit) && !edit.isReadOnly();
    case TEditCommand::Copy:
        return HasSelection(edit);
    case TEditCommand::Paste:
        return !edit.isReadOnly() && !QApplication::clipboard()->text().isEmpty();
    case TEditCommand::Undo:
        return CanUndo(edit) && !edit.isReadOnly();
    default:
        return true;
    }
}

template<class Edit> void Run(Edit& edit, TEditCommand command) {
    switch (command) {
    case TEditCommand::Cut:
        return edit.cut();
    case TEditCommand::Copy:
        return edit.copy();
    case TEditCommand::Paste:
        return edit.paste();
    case TEditCommand::SelectAll:
        return edit.selectAll();
    case TEditCommand::Undo:
        return edit.undo();
    case TEditCommand::Delete:
        if constexpr (std::is_same_v<Edit, QLineEdit>)
            edit.del();
        else
            edit.textCursor().removeSelectedText();
    }
}

} // namespace

void TEditAction::Update() {
    QWidget* focused = QApplication::focusWidget();
    if (auto* line = dynamic_cast<QLineEdit*>(focused))
        SetEnabled(CanRun(*line, FCommand));
    else if (auto* memo = dynamic_cast<QPlainTextEdit*>(focused))
        SetEnabled(CanRun(*memo, FCommand));
    else
        SetEnabled(false);
}

void TEditAction::ExecuteTarget() {
    QWidget* focused = QApplication::focusWidget();
    if (auto* line = dynamic_cast<QLineEdit*>(focused))
        Run(*line, FCommand);
    else if (auto* memo = dynamic_cast<QPlainTextEdit*>(focused))
        Run(*memo, FCommand);
}
