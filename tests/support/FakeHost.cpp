#include "support/FakeHost.h"

namespace {

// A dockable form's place: the form is a window of its own.
class TFakeDockSite : public IDockSite {
public:
    TFakeDockSite(TForm& form, IDockEvents& events)
        : FForm(form)
        , FEvents(events) {}

    void LoadWindowState(IDesktopStore& store, const std::string& section) override {
        FFloating = store.ReadBool(section, "floating", FFloating);
    }
    void SaveWindowState(IDesktopStore& store, const std::string& section, bool wholeDesktop) override {
        store.WriteBool(section, "floating", FFloating);
        store.WriteBool(section, "visible", IsVisible());
        if (wholeDesktop) store.UpdateFile();
    }
    void ForceShow() override {
        FFloating = false;
        Show();
    }
    void Show() override {
        if (IsVisible()) return;
        FForm.Widget().show();
        FEvents.DockShown();
    }
    void Hide() override {
        if (!IsVisible()) return;
        FForm.Widget().hide();
        FEvents.DockHidden();
    }
    bool IsVisible() const override { return FForm.Widget().isVisible(); }
    bool IsFloating() const override { return FFloating; }
    void SetFloating(bool floating) override { FFloating = floating; }

private:
    TForm& FForm;
    IDockEvents& FEvents;
    bool FFloating = false;
};

} // namespace

std::string TFakeDesktopStore::ReadString(const std::string& section, const std::string& name,
                                          const std::string& fallback) {
    const auto found = Values.find({section, name});
    return found == Values.end() ? fallback : found->second;
}

int TFakeDesktopStore::ReadInteger(const std::string& section, const std::string& name, int fallback) {
    return std::stoi(ReadString(section, name, std::to_string(fallback)));
}

bool TFakeDesktopStore::ReadBool(const std::string& section, const std::string& name, bool fallback) {
    return ReadInteger(section, name, fallback) != 0;
}

void TFakeDesktopStore::WriteString(const std::string& section, const std::string& name,
                                    const std::string& value) {
    Values[{section, name}] = value;
}

void TFakeDesktopStore::WriteInteger(const std::string& section, const std::string& name, int value) {
    WriteString(section, name, std::to_string(value));
}

void TFakeDesktopStore::WriteBool(const std::string& section, const std::string& name, bool value) {
    WriteInteger(section, name, value);
}

TFakeTabFrame::TFakeTabFrame()
    : FWindow(std::make_unique<TForm>(nullptr, "FakeTabFrame"))
    , FBody(new TFrame(FWindow.get(), "FakeTabFrameBody")) {
    FBody->SetAlign(TAlign::Client);
    FWindow->SetBounds(0, 0, 900, 700);
}

TFakeTabFrame::~TFakeTabFrame() = default;

void TFakeTabFrame::Show() {
    Shown = true;
    FWindow->Widget().show();
    if (OnSelect) OnSelect();
}

bool TFakeTabFrame::Close() {
    if (Closed) return true;
    if (OnClose && !OnClose()) return false;
    Closed = true;
    Shown = false;
    FWindow->Widget().hide();
    return true;
}

TFakeHost::TFakeHost() {
    VantrelIDEServices = this;
}

TFakeHost::~TFakeHost() {
    VantrelIDEServices = nullptr;
}

std::shared_ptr<TFakeTabFrame> TFakeHost::OpenTab() const {
    for (const auto& kept : TabFrames)
        if (const auto frame = kept.lock(); frame && frame->Shown) return frame;
    return nullptr;
}

IHostService* TFakeHost::Find(std::type_index service) {
    if (service == typeid(IHostDockServices)) return static_cast<IHostDockServices*>(this);
    if (service == typeid(IHostFieldAddresses)) return static_cast<IHostFieldAddresses*>(this);
    if (service == typeid(IHostEditorServices)) return static_cast<IHostEditorServices*>(this);
    return nullptr;
}

std::unique_ptr<IDockSite> TFakeHost::AddDockableForm(TForm& form, IDockEvents& events) {
    return std::make_unique<TFakeDockSite>(form, events);
}

void TFakeHost::FocusWindow(TForm& form) {
    ++Focused;
    form.Widget().activateWindow();
}

void TFakeHost::RegisterDesktopFormClass(const std::string& className, const std::string&,
                                         const std::string&) {
    DesktopForms.push_back(className);
}

void TFakeHost::RegisterFieldAddress(const std::string&, const void* address) {
    FieldAddresses.insert(address);
}

void TFakeHost::UnregisterFieldAddress(const void* address) {
    FieldAddresses.erase(address);
}

std::shared_ptr<IHostTabFrame> TFakeHost::CreateTabFrame() {
    auto frame = std::make_shared<TFakeTabFrame>();
    TabFrames.push_back(frame);
    return frame;
}

void TFakeHost::RegisterActionList(int, int, TActionList& list, THostActionListFlags) {
    ActionLists.push_back(&list);
}
