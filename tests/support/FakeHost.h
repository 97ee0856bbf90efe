// A host IDE without a window of its own: dockable forms are plain windows, tab
// frames as well, and the desktop store lives in memory. It is there for tests of the
// panel; the studio is tested as itself.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "contracts/HostServices.h"
#include "platform/widgets/Forms.h"

class TFakeDesktopStore : public IDesktopStore {
public:
    std::map<std::pair<std::string, std::string>, std::string> Values;
    int Updates = 0;

    std::string ReadString(const std::string& section, const std::string& name,
                           const std::string& fallback) override;
    int ReadInteger(const std::string& section, const std::string& name, int fallback) override;
    bool ReadBool(const std::string& section, const std::string& name, bool fallback) override;
    void WriteString(const std::string& section, const std::string& name, const std::string& value) override;
    void WriteInteger(const std::string& section, const std::string& name, int value) override;
    void WriteBool(const std::string& section, const std::string& name, bool value) override;
    void UpdateFile() override { ++Updates; }
};

// A tab of the editor area, as a window.
class TFakeTabFrame : public IHostTabFrame {
public:
    TFakeTabFrame();
    ~TFakeTabFrame() override;

    std::string Caption, Title, Icon, HelpKeyword;
    bool Shown = false;
    bool Closed = false;

    TFrame& Body() override { return *FBody; }
    void SetCaption(const std::string& caption) override { Caption = caption; }
    void SetTitle(const std::string& title) override { Title = title; }
    void SetIcon(const std::string& iconName) override { Icon = iconName; }
    void SetHelpKeyword(const std::string& keyword) override { HelpKeyword = keyword; }
    void Show() override;
    bool Close() override;

private:
    std::unique_ptr<TForm> FWindow;
    TFrame* FBody = nullptr;
};

class TFakeHost : public IVantrelIDEServices,
                  public IHostDockServices,
                  public IHostFieldAddresses,
                  public IHostEditorServices {
public:
    // Becomes the host; there may be one at a time.
    TFakeHost();
    ~TFakeHost() override;

    TFakeDesktopStore Store;
    std::set<const void*> FieldAddresses;
    std::vector<std::string> DesktopForms;
    std::vector<std::weak_ptr<TFakeTabFrame>> TabFrames;
    std::vector<TActionList*> ActionLists;
    int Focused = 0;
    // What Get_TopBuffer gives.
    std::shared_ptr<IHostEditBuffer> TopBuffer;

    // The tab frame on show; empty when there is none.
    std::shared_ptr<TFakeTabFrame> OpenTab() const;

    IHostService* Find(std::type_index service) override;

    std::unique_ptr<IDockSite> AddDockableForm(TForm& form, IDockEvents& events) override;
    void FocusWindow(TForm& form) override;
    IDesktopStore& IDEIniFile() override { return Store; }
    void RegisterDesktopFormClass(const std::string& className, const std::string& section,
                                  const std::string& name) override;
    void RegisterFieldAddress(const std::string& name, const void* address) override;
    void UnregisterFieldAddress(const void* address) override;
    std::shared_ptr<IHostEditBuffer> Get_TopBuffer() override { return TopBuffer; }
    std::shared_ptr<IHostTabFrame> CreateTabFrame() override;
    void RegisterActionList(int group, int position, TActionList& list, THostActionListFlags flags) override;
};
