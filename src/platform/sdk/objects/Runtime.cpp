// What the SDK tells of itself and of what runs behind it.
#include "platform/sdk/objects/Make.h"

#include <google/protobuf/stubs/common.h>
#include <grpcpp/grpcpp.h>

namespace Sdk {

namespace {

class TVersionInfo final : public IStComWrapperVersionInfo {
public:
    std::u16string Get_Version() override {
        const TCall call("IStComWrapperVersionInfo.Get_Version");
        return Wide(QUORANE_SDK_VERSION);
    }
};

// No virtual machine runs behind this SDK; it says what does instead.
class TRunningVM final : public IStRunningJavaVM {
public:
    std::u16string Get_Version() override {
        const TCall call("IStRunningJavaVM.Get_Version");
        return Wide("none; native code with gRPC " + grpc::Version() + " and protobuf " +
                    google::protobuf::internal::VersionString(GOOGLE_PROTOBUF_VERSION));
    }
};

class TConfiguration final : public IStJavaConfiguration {
public:
    Handle<IStRunningJavaVM> Get_RunningJavaVM() override {
        const TCall call("IStJavaConfiguration.Get_RunningJavaVM");
        return std::make_shared<TRunningVM>();
    }
};

class TInitializer final : public IStInitializer {
public:
    Handle<IStComWrapperVersionInfo> Get_VersionInformation() override {
        const TCall call("IStInitializer.Get_VersionInformation");
        return std::make_shared<TVersionInfo>();
    }

    Handle<IStJavaConfiguration> Get_JavaConfiguration() override {
        const TCall call("IStInitializer.Get_JavaConfiguration");
        return std::make_shared<TConfiguration>();
    }
};

} // namespace

Handle<IStInitializer> MakeInitializer() {
    return std::make_shared<TInitializer>();
}

} // namespace Sdk
