// Where the channels to servers come from.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace grpc {
class Channel;
}

namespace Sdk {

// Gives a channel to the server of that name, a new one when the one given before
// has broken; empty when no such server can be reached. May raise Exception, whose
// message then is the failure that the user sees. Called on the thread that uses
// the SDK.
using TChannelFactory = std::function<std::shared_ptr<grpc::Channel>(const std::string& host)>;

} // namespace Sdk
