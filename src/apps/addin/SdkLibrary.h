// The SDK's library beside the module, opened when the first SDK object is made.
#pragma once

#include "server/tlb/ClassObjects.h"

#include <filesystem>

// The folder of the module that this code stands in.
std::filesystem::path ModuleFolder();

// Raises EOleSysError when the library cannot be opened; the next call tries again.
// The library stays open to the end of the process.
Quorane_TLB::Handle<Quorane_TLB::IDispatch> CreateSdkObject(const std::filesystem::path& library,
                                                            const Quorane_TLB::Guid& classId,
                                                            const std::string& machine);
