#include "contracts/HostServices.h"

IVantrelIDEServices* VantrelIDEServices = nullptr;

// The destructors stand here, so that host and module agree on one set of classes.
IHostService::~IHostService() = default;
IHostWizard::~IHostWizard() = default;
IHostWizardServices::~IHostWizardServices() = default;
IHostNServices::~IHostNServices() = default;
IHostMenu::~IHostMenu() = default;
IHostMainForm::~IHostMainForm() = default;
IHostStartup::~IHostStartup() = default;
IVantrelIDEServices::~IVantrelIDEServices() = default;

IDesktopStore::~IDesktopStore() = default;
IDockEvents::~IDockEvents() = default;
IDockSite::~IDockSite() = default;
IHostDockServices::~IHostDockServices() = default;
IHostFieldAddresses::~IHostFieldAddresses() = default;

IHostEditPosition::~IHostEditPosition() = default;
IHostEditBuffer::~IHostEditBuffer() = default;
IHostEditView::~IHostEditView() = default;
IHostEditor::~IHostEditor() = default;
IHostSourceEditor::~IHostSourceEditor() = default;
IHostModule::~IHostModule() = default;
IHostModuleServices::~IHostModuleServices() = default;
IHostTabFrame::~IHostTabFrame() = default;
IHostEditorServices::~IHostEditorServices() = default;

void RaiseHostServiceMissing(const std::type_index& service) {
    throw Exception(std::string("The host lacks the service ") + service.name() + ".");
}
