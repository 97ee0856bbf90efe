// The way into the SDK: the classes that a client can start, by class identifier.
#pragma once

#include "platform/sdk/Channels.h"
#include "server/Quorane_TLB.h"
#include "server/tlb/ClassObjects.h"

namespace Sdk {

// Gives a provider for the binding whose servers are reached through these channels.
// It makes the factories, the empty identities and the runtime's description; for a
// class that it does not have it gives an empty handle, and for another machine it
// raises EOleSysError.
Quorane_TLB::TClassObjectProvider MakeClassObjectProvider(TChannelFactory channels);

} // namespace Sdk
