// A client in a process of its own: logs on to the server at a loopback port, locks a
// requirement, says so, and stays until it is killed.
#include "platform/sdk/ClassObjects.h"
#include "server/Quorane_TLB.h"

#include <grpcpp/grpcpp.h>

#include <cstdio>
#include <exception>
#include <string>

#include <unistd.h>

using namespace Quorane_TLB;

int main(int, char** argv) {
    try {
        const std::string address = std::string("127.0.0.1:") + argv[1];
        SetClassObjectProvider(Sdk::MakeClassObjectProvider([&](const std::string&) {
            return grpc::CreateChannel(address, grpc::InsecureChannelCredentials());
        }));
        const auto session = CoQuoraneServerFactory::Create()->Create1(u"port")->login(u"ann", u"secret");
        session->getLatestRequirement(std::stoi(argv[2]))->lock();
        std::puts("locked");
        std::fflush(stdout);
        pause();
    } catch (const std::exception& failure) {
        std::puts(failure.what());
    }
}
