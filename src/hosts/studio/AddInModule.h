// A loaded add-in module.
#pragma once

#include <filesystem>
#include <memory>

class TAddInModule {
public:
    // Loads the module and finds its entry; calls nothing yet. Raises Exception with
    // the reason when that fails.
    explicit TAddInModule(const std::filesystem::path& path);
    // Unloads the module; its own finalization runs here.
    ~TAddInModule();

    TAddInModule(const TAddInModule&) = delete;
    TAddInModule& operator=(const TAddInModule&) = delete;

    // Calls IDERegister. Raises what that raises.
    void Register();

private:
    void* FHandle;
    void (*FRegister)() = nullptr;
};
