// The door between the host IDE and the requirements panel: what happens when the
// module is loaded, when the host's main form exists, when the user picks the menu
// item, and when the module is unloaded.
#pragma once

#include "contracts/HostServices.h"

#include <cstdint>
#include <memory>

// The add-in as the host knows it.
class TQuoraneAddin : public IHostWizard {
public:
    void AfterSave() override {}
    void BeforeSave() override {}
    void Destroyed() override {}
    void Modified() override {}
    std::string GetIDString() override;
    std::string GetName() override;
    THostWizardState GetState() override;
    void Execute() override {}

    // The click of the menu item: probes the SDK and brings the panel up, or tells in
    // a box that the SDK is missing. Raises what the panel's ShowForm raises. Enters
    // the message loop.
    void ShowForm();
};

// Waits for the host's main form and then registers all that the add-in has.
class TProductStartup {
public:
    // Raises Exception when the host cannot tell of its main form.
    TProductStartup();
    // Takes wizard, handler and panel out of the host, in this order.
    ~TProductStartup();

    TProductStartup(const TProductStartup&) = delete;
    TProductStartup& operator=(const TProductStartup&) = delete;

private:
    void MainFormCreated();
    void AddMenuItem(int imageIndex);

    std::int32_t FWizardIndex = -1;
    int FHandlerToken;
};

// Makes the one TProductStartup and keeps it.
void RegisterAddIn();
// Destroys it and what the panel leaves behind; nothing happens when there is none.
void UnregisterAddIn();
