// All interfaces of the binding as a table, for messages and for what looks an
// interface up by its identifier.
#pragma once

#include <span>
#include <string_view>

#include "server/tlb/Guid.h"

namespace Quorane_TLB {

struct TInterfaceEntry {
    std::string_view Name;
    std::string_view Parent; // empty when it stands directly on IDispatch
    Guid Id;
    std::string_view ClassName; // empty when the interface has no class of its own
    Guid ClassId;
};

// A parent stands before what derives from it.
std::span<const TInterfaceEntry> InterfaceTable();

} // namespace Quorane_TLB
