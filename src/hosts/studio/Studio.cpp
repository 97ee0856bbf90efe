#include "hosts/studio/Studio.h"

#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

TStudioOptions TStudioOptions::Default() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString programs = QCoreApplication::applicationDirPath();
    return {std::filesystem::path(QFile::encodeName(programs).toStdString()) / "libquorane-addin.so",
            std::filesystem::path(QFile::encodeName(config).toStdString()) / "quorane" / "studio.ini"};
}

TStudio::TStudio(const TStudioOptions& options)
    : FStore(options.Desktop)
    , FServices(FStore) {
    VantrelIDEServices = &FServices;
    if (!options.Module.empty()) LoadModule(options.Module);
    FWindow = std::make_unique<TStudioWindow>(FStore);
    FServices.AttachWindow(*FWindow);
    FWindow->OnClosing = [this] { UnloadModule(); };
    if (!FModuleFailure.empty()) FWindow->ShowNote(ToQt(FModuleFailure));
    FServices.Startup().TellMainFormCreated();
}

TStudio::~TStudio() {
    UnloadModule();
    FServices.DetachWindow();
    FWindow.reset();
    VantrelIDEServices = nullptr;
}

void TStudio::LoadModule(const std::filesystem::path& path) {
    try {
        FModule = std::make_unique<TAddInModule>(path);
        FModule->Register();
    } catch (const std::exception& failure) {
        FModuleFailure = failure.what();
    }
    // Not inside the catch clause: the exception may be of the module's own code.
    if (!FModuleFailure.empty()) UnloadModule();
}

void TStudio::UnloadModule() {
    if (!FModule) return;
    FServices.DropModuleParts();
    FModule.reset();
    if (FWindow) FWindow->ShowNote(QStringLiteral("Quorane Requirements is not loaded."));
}
