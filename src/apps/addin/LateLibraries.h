// The libraries beside the module that are opened at their first use: the SDK and the
// HTML engine. Both stay open to the end of the process.
#pragma once

#include "contracts/HtmlEngine.h"
#include "server/tlb/ClassObjects.h"

#include <filesystem>

// The folder of the module that this code stands in.
std::filesystem::path ModuleFolder();

// Each raises EOleSysError when the library cannot be opened; the next call tries again.

Quorane_TLB::Handle<Quorane_TLB::IDispatch> CreateSdkObject(const std::filesystem::path& library,
                                                            const Quorane_TLB::Guid& classId,
                                                            const std::string& machine);

std::unique_ptr<IWebBrowser> CreateEngineBrowser(const std::filesystem::path& library, TWinControl& parent,
                                                 const std::string& name);
