// The host's editor contract over the editor area.
#pragma once

#include "contracts/EditorServices.h"

#include <QPointer>

#include <vector>

class QMenu;
class QWidget;
class TEditorArea;

class TModuleServices : public IHostModuleServices {
public:
    explicit TModuleServices(TEditorArea& area)
        : FArea(area) {}

    std::shared_ptr<IHostModule> Get_CurrentModule() override;
    std::shared_ptr<IHostModule> FindModule(const std::string& fileName) override;

private:
    TEditorArea& FArea;
};

class TEditorServices : public IHostEditorServices {
public:
    explicit TEditorServices(TEditorArea& area)
        : FArea(area) {}

    std::shared_ptr<IHostEditBuffer> Get_TopBuffer() override;
    std::shared_ptr<IHostTabFrame> CreateTabFrame() override;
    void RegisterActionList(int group, int position, TActionList& list, THostActionListFlags flags) override;

    // Adds the visible actions of all lists to a context menu that is about to open;
    // their update handlers have run then.
    void FillContextMenu(QMenu& menu) const;
    // Forgets all lists, whose code is about to go.
    void DropActionLists() { FLists.clear(); }

private:
    struct TRegistered {
        int Group;
        int Position;
        QPointer<TActionList> List;
        THostActionListFlags Flags;
    };
    TEditorArea& FArea;
    std::vector<TRegistered> FLists;
};
