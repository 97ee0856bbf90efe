// The host's editor area: source editors with their modules and buffers, tabs that
// hold widgets, and the actions that stand in the source editor's context menu.
#pragma once

#include "contracts/HostService.h"

#include <bitset>
#include <functional>
#include <memory>
#include <string>

class TActionList;
class TFrame;

class IHostEditPosition {
public:
    virtual ~IHostEditPosition();

    // Inserts at the cursor and leaves the cursor behind the text; one undo step.
    // Raises Exception when the buffer is read-only.
    virtual void InsertText(const std::string& utf8) = 0;
};

class IHostEditBuffer {
public:
    virtual ~IHostEditBuffer();

    virtual std::shared_ptr<IHostEditPosition> Get_EditPosition() = 0;

    // The absolute path, or for a file never saved the caption of its tab.
    virtual std::string Get_FileName() = 0;

    // The whole text, with the line ends that the file has.
    virtual std::string Get_Text() = 0;

    // Replaces the whole text as one undo step; the cursor stays in its line as far
    // as that exists. Raises Exception when the buffer is read-only.
    virtual void Set_Text(const std::string& utf8) = 0;
};

class IHostEditView {
public:
    virtual ~IHostEditView();

    virtual std::shared_ptr<IHostEditBuffer> Get_Buffer() = 0;

    // Brings the screen up to date with the buffer.
    virtual void Paint() = 0;
};

// An editor of any kind. Whether it is a source editor is asked by
// std::dynamic_pointer_cast<IHostSourceEditor>.
class IHostEditor {
public:
    virtual ~IHostEditor();
};

class IHostSourceEditor : public IHostEditor {
public:
    ~IHostSourceEditor() override;

    // The view at index, counted from 0; empty when there is none.
    virtual std::shared_ptr<IHostEditView> GetEditView(int index) = 0;
    virtual void Show() = 0;
};

// An open file. A handle whose file was closed since stays valid; its calls then
// give empty handles or raise Exception.
class IHostModule {
public:
    virtual ~IHostModule();

    virtual std::shared_ptr<IHostEditor> Get_CurrentEditor() = 0;

    // The editor of the module's file at index; 0 is the source itself.
    virtual std::shared_ptr<IHostEditor> GetModuleFileEditor(int index) = 0;
    virtual void Show() = 0;
};

class IHostModuleServices : public IHostService {
public:
    ~IHostModuleServices() override;

    // The module in front; empty when no file is open.
    virtual std::shared_ptr<IHostModule> Get_CurrentModule() = 0;

    // The module of that file, opened when it is not open yet. Empty when there is
    // no such file or it cannot be read.
    virtual std::shared_ptr<IHostModule> FindModule(const std::string& fileName) = 0;
};

// A tab of the editor area that holds widgets in place of a text. It lives until it
// is closed; a handle kept longer has no effect any more.
class IHostTabFrame {
public:
    virtual ~IHostTabFrame();

    // Where the owner of the tab moves its widgets to.
    virtual TFrame& Body() = 0;

    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetTitle(const std::string& title) = 0;

    // The icon by its name among the component layer's icons.
    virtual void SetIcon(const std::string& iconName) = 0;
    virtual void SetHelpKeyword(const std::string& keyword) = 0;
    virtual void Show() = 0;

    // Asks OnClose, as the tab's close button does, and goes unless that refuses.
    // Widgets still in the body are destroyed with it. Gives whether the tab went.
    virtual bool Close() = 0;

    std::function<bool()> OnClose;
    std::function<void()> OnSelect;
    std::function<void()> OnDeselect;
};

enum THostActionListFlag { alContextMenu, alUpdateWhenIdle, alShortCuts, alMainMenu };
using THostActionListFlags = std::bitset<4>;

class IHostEditorServices : public IHostService {
public:
    ~IHostEditorServices() override;

    // The buffer of the source editor in front; empty when there is none.
    virtual std::shared_ptr<IHostEditBuffer> Get_TopBuffer() = 0;

    // Makes a tab that is not shown yet.
    virtual std::shared_ptr<IHostTabFrame> CreateTabFrame() = 0;

    // The list's actions appear in the source editors' context menu, grouped by
    // category, and the host runs their update and execute handlers. Group and
    // position are 0 for the host's own choice. The host lets go of a list when the
    // list is destroyed.
    virtual void RegisterActionList(int group, int position, TActionList& list,
                                    THostActionListFlags flags) = 0;
};
