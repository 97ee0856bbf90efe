// Many clients that each change and save a requirement of their own all the time, over
// the loopback port of one server: nothing fails and nothing gets lost.
#include "Limits.h"

#include "backend/exchange/GeneratedProject.h"
#include "backend/service/EmbeddedServer.h"
#include "platform/sdk/ClassObjects.h"
#include "server/UQuoraneStHelpers.h"
#include "support/TempFolder.h"

#include <grpcpp/grpcpp.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>

using namespace Quorane_TLB;

namespace {

constexpr int ClientCount = 50;

struct TClient {
    Handle<ISession> Session;
    std::int32_t Number = 0;
    int Saves = 0;
    std::vector<double> Times; // of lock, save and unlock together, in milliseconds
    std::string Failure;

    std::u16string Name() const {
        return Wide("Client " + std::to_string(Number) + ", save " + std::to_string(Saves));
    }

    void Work(std::chrono::steady_clock::time_point end) {
        try {
            const auto requirement = Session->getLatestRequirement(Number);
            while (std::chrono::steady_clock::now() < end) {
                ++Saves;
                Times.push_back(TimeOnce([&] {
                    requirement->lock();
                    requirement->Set_Name(Name());
                    requirement->save();
                    requirement->unlock();
                }));
            }
        } catch (const std::exception& failure) {
            Failure = failure.what();
        }
    }
};

// Each client has a connection of its own, as clients on other machines have.
std::shared_ptr<grpc::Channel> Connect(int port) {
    grpc::ChannelArguments arguments;
    arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    return grpc::CreateCustomChannel("127.0.0.1:" + std::to_string(port), grpc::InsecureChannelCredentials(),
                                     arguments);
}

Handle<ISession> LogOn() {
    return CoQuoraneServerFactory::Create()->Create1(u"local")->login(u"admin", u"admin");
}

std::vector<TClient> MakeClients() {
    std::vector<TClient> clients(ClientCount);
    for (TClient& client : clients)
        client.Session = LogOn();
    const auto project = Cast<IProject>(clients[0].Session->Get_Projects()->Get_Item(0).AsDispatch());
    const auto type = project->Get_CurrentBaseline()->Get_RequirementTree()->Get_Root()->getChild(0);
    const auto branch = type->getChild(0);
    for (int index = 0; index < ClientCount; ++index)
        clients[static_cast<std::size_t>(index)].Number = branch->getChild(index)->Get_ID()->Get_IDNumber();
    return clients;
}

// Whether another client finds every save of this one: each made a version, and the
// last one's name stands.
bool IsWhole(const TClient& client, const Handle<ISession>& reader) {
    const auto requirement = reader->getLatestRequirement(client.Number);
    return requirement->Get_Version()->Get_MinorVersion() == client.Saves &&
           requirement->Get_Name() == client.Name();
}

double Percentile(std::vector<double>& sorted, double share) {
    return sorted.at(static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1)));
}

} // namespace

TLimits MeasureManyClients(int seconds) {
    const TTempFolder folder;
    Backend::ServerOptions options;
    options.DatabasePath = folder.File("clients.db");
    options.QuickHashesForTests = true;
    Exchange::BuildGeneratedDatabase(options.DatabasePath, {1'000, 100},
                                     Backend::BulkWriter::Hashing::QuickForTests);
    Backend::EmbeddedServer server(options);
    const int port = server.ListenOnLoopback();
    server.Start();
    SetClassObjectProvider(
        Sdk::MakeClassObjectProvider([port](const std::string&) { return Connect(port); }));
    std::vector<TClient> clients = MakeClients();

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    std::vector<std::thread> threads;
    for (TClient& client : clients)
        threads.emplace_back([&client, end] { client.Work(end); });
    for (std::thread& thread : threads)
        thread.join();

    const auto reader = LogOn();
    int failures = 0, losses = 0;
    std::string failure;
    std::vector<double> times;
    for (const TClient& client : clients) {
        times.insert(times.end(), client.Times.begin(), client.Times.end());
        if (!client.Failure.empty()) {
            ++failures;
            failure = client.Failure;
        } else if (!IsWhole(client, reader)) {
            ++losses;
        }
    }
    SetClassObjectProvider({});
    if (times.empty()) throw std::runtime_error("no client has saved anything: " + failure);
    std::ranges::sort(times);
    char detail[128];
    std::snprintf(detail, sizeof detail, "%zu saves in %d s; lock, save and unlock p50 %.1f ms, p99 %.1f ms",
                  times.size(), seconds, Percentile(times, 0.5), Percentile(times, 0.99));
    return {{"50 clients that save, failures", 0, static_cast<double>(failures), "", failure},
            {"50 clients that save, lost updates", 0, static_cast<double>(losses), "", detail}};
}
