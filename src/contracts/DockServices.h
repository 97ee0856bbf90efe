// What a host does for dockable forms: a place to stand in, a layout that outlives
// the program, and the store in which that layout is kept.
#pragma once

#include "contracts/HostService.h"

#include <memory>
#include <string>

class TForm;

// The host's desktop store: named values in sections. What is written is on disk
// after UpdateFile or when the host closes.
class IDesktopStore {
public:
    virtual ~IDesktopStore();

    // Gives fallback for a missing section or value; reading creates nothing.
    virtual std::string ReadString(const std::string& section, const std::string& name,
                                   const std::string& fallback) = 0;
    virtual int ReadInteger(const std::string& section, const std::string& name, int fallback) = 0;
    virtual bool ReadBool(const std::string& section, const std::string& name, bool fallback) = 0;

    virtual void WriteString(const std::string& section, const std::string& name,
                             const std::string& value) = 0;
    virtual void WriteInteger(const std::string& section, const std::string& name, int value) = 0;
    virtual void WriteBool(const std::string& section, const std::string& name, bool value) = 0;

    // Raises Exception when the file cannot be written; the file on disk is then
    // the one of the write before.
    virtual void UpdateFile() = 0;
};

// What the host tells a dockable form about its place.
class IDockEvents {
public:
    virtual ~IDockEvents();

    // The form came up or went away as a whole, by the user or by a call; being
    // covered by another tab of the same dock area is neither.
    virtual void DockShown() = 0;
    virtual void DockHidden() = 0;
};

// The place of one dockable form in the host's window. Destroying it takes the form
// out of the window again; the form itself stays its owner's.
class IDockSite {
public:
    virtual ~IDockSite();

    // Place, size and floating state, as they were saved under section. A section
    // that was never saved leaves the form where the host puts new forms.
    virtual void LoadWindowState(IDesktopStore& store, const std::string& section) = 0;

    // wholeDesktop also saves the layout of everything around the form.
    virtual void SaveWindowState(IDesktopStore& store, const std::string& section, bool wholeDesktop) = 0;

    // Docked and in front, whatever it was before.
    virtual void ForceShow() = 0;

    virtual void Show() = 0;
    virtual void Hide() = 0;
    virtual bool IsVisible() const = 0;
    virtual bool IsFloating() const = 0;
    virtual void SetFloating(bool floating) = 0;
};

class IHostDockServices : public IHostService {
public:
    ~IHostDockServices() override;

    // Makes a hidden place for the form under the form's name and caption. Form and
    // events must outlive the site.
    virtual std::unique_ptr<IDockSite> AddDockableForm(TForm& form, IDockEvents& events) = 0;

    // Activates a docked form: in front of its area, with the keyboard focus.
    virtual void FocusWindow(TForm& form) = 0;

    // The desktop store; it lives as long as the host.
    virtual IDesktopStore& IDEIniFile() = 0;

    // Lets the host keep the form of that class in its desktop, under section.
    virtual void RegisterDesktopFormClass(const std::string& className, const std::string& section,
                                          const std::string& name) = 0;
};

// Optional: a host that restores forms through the variables that hold them. The
// address only identifies the variable.
class IHostFieldAddresses : public IHostService {
public:
    ~IHostFieldAddresses() override;

    virtual void RegisterFieldAddress(const std::string& name, const void* address) = 0;
    virtual void UnregisterFieldAddress(const void* address) = 0;
};
