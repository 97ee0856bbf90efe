// Where the objects of the SDK's classes come from. The binding knows no SDK: who
// composes a program sets the provider, once, before the first object is made.
#pragma once

#include <functional>
#include <string>

#include "server/tlb/Dispatch.h"

namespace Quorane_TLB {

// Gives a new object of the class, on this machine when the name is empty; an empty
// handle when there is no such class. May raise, which reaches the creator's caller.
using TClassObjectProvider =
    std::function<Handle<IDispatch>(const Guid& classId, const std::string& machine)>;

// Replaces the provider; an empty one takes it away.
void SetClassObjectProvider(TClassObjectProvider provider);

// The one function that the SDK's library exports, by this name: what a provider gives
// goes into object. It may raise.
inline constexpr const char* SdkEntryName = "QuoraneClassObject";
using TSdkEntry = void (*)(const Guid& classId, const std::string& machine, Handle<IDispatch>& object);

} // namespace Quorane_TLB
