// A small add-in that does with the host what an add-in does, and writes a line about
// each step to the file that QUORANE_TEST_LOG names.
#include "contracts/HostServices.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Forms.h"
#include "platform/widgets/Menus.h"

#include <cstdlib>
#include <fstream>

namespace {

void Log(const std::string& line) {
    std::ofstream(std::getenv("QUORANE_TEST_LOG"), std::ios::app) << line << '\n';
}

// An exception whose code goes with the module.
class TOwnException : public Exception {
public:
    TOwnException()
        : Exception("The module does not want to.") {}
};

class TWizard : public IHostWizard {
public:
    ~TWizard() override { Log("wizard gone"); }
    void AfterSave() override {}
    void BeforeSave() override {}
    void Destroyed() override { Log("wizard removed"); }
    void Modified() override {}
    std::string GetIDString() override { return "Test.Wizard"; }
    std::string GetName() override { return "TestWizard"; }
    THostWizardState GetState() override { return 1; }
    void Execute() override {}
};

class TAddIn {
public:
    TAddIn() {
        Log(FindHostService<IHostMainForm>() ? "main form early" : "register");
        FToken = HostService<IHostStartup>().AddMainFormCreated([this] { MainFormCreated(); });
    }
    ~TAddIn() {
        if (FWizard != -1) HostService<IHostWizardServices>().RemoveWizard(FWizard);
        HostService<IHostStartup>().RemoveMainFormCreated(FToken);
        if (FForm) FForm->FormDestroy();
        Log("finalized");
    }

private:
    void MainFormCreated() {
        Log("main form");
        FWizard = HostService<IHostWizardServices>().AddWizard(std::make_shared<TWizard>());
        MakeForm();
        auto item = std::make_unique<TMenuItem>("TestItem", "Test");
        item->OnClick = [this] { FForm->ForceShow(); };
        HostService<IHostMainForm>().FindMenu("ViewsMenu")->Insert(10, std::move(item));
        FActions = std::make_unique<TActionList>(*FForm, "TestActions");
        auto* group = new TAction(*FActions, "Group");
        group->SetCategory("Test");
        group->SetCaption("Test");
        HostService<IHostEditorServices>().RegisterActionList(0, 0, *FActions, 7);
        FTab = HostService<IHostEditorServices>().CreateTabFrame();
        FTab->OnClose = [] {
            Log("tab closes");
            return true;
        };
        FTab->Show();
    }

    void MakeForm() {
        FForm = std::make_unique<TDockableForm>("TestForm");
        FForm->SetCaption("Test form");
        FForm->OnHide = [] { Log("form hidden"); };
        FForm->SetAutoSave(true);
        FForm->FormCreate();
        FForm->LoadWindowState(HostService<IHostDockServices>().IDEIniFile());
    }

    int FToken = 0;
    std::int32_t FWizard = -1;
    std::unique_ptr<TDockableForm> FForm;
    std::unique_ptr<TActionList> FActions;
    std::shared_ptr<IHostTabFrame> FTab;
};

} // namespace

extern "C" void IDERegister() {
    if (std::getenv("QUORANE_TEST_REFUSE")) throw TOwnException();
    static const TAddIn addIn;
}
