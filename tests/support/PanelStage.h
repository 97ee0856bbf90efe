// The real panel with real widgets, on the real SDK and service with the sample
// projects or another database, in a fake host.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "panel/QuoraneDockForm.h"
#include "support/Actor.h"
#include "support/FakeHost.h"
#include "support/FakeSystemServices.h"
#include "support/SampleServer.h"
#include "support/ScriptedDialogs.h"

class TPanelStage {
public:
    // Starts the server and makes the panel, hidden and not connected.
    explicit TPanelStage(const std::string& database = {});
    ~TPanelStage();
    TPanelStage(const TPanelStage&) = delete;
    TPanelStage& operator=(const TPanelStage&) = delete;

    TfrmQuoraneMain& Panel();
    TQuoraneGUIHelpers& Helpers();

    // Shows the panel and fills the logon dialog in. Gives whether the panel is
    // connected then.
    bool LogOn(const std::string& user = "anna");
    bool LogOn(const std::string& host, const std::string& user, const std::string& password);
    // A list's entries, a node's children.
    static std::vector<std::string> Entries(TComboBox& list);
    static std::vector<std::string> Children(TTreeNode& node);
    // Selects by the texts below the project's node.
    TTreeNode& Select(const std::vector<std::string>& path);

    TScriptedDialogs Dialogs;
    TFakeSystemServices System;
    TFakeHost Host;
    std::unique_ptr<TSampleServer> Server;
    std::unique_ptr<TActor> User;
};
