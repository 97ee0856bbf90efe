// A small project on a server of its own, and clients that call it over either kind
// of channel.
#pragma once

#include "backend/service/BulkWriter.h"
#include "backend/service/EmbeddedServer.h"
#include "support/TempFolder.h"

#include "quorane.grpc.pb.h"

#include <grpcpp/grpcpp.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>

namespace wire = quorane::wire;

// What calls that are refused throw.
struct Refused : std::runtime_error {
    explicit Refused(const grpc::Status& status)
        : std::runtime_error(status.error_message())
        , Code(status.error_code()) {}
    grpc::StatusCode Code;
};

// What a call was refused with; empty when it was not.
std::string RefusalOf(const std::function<void()>& call);

// One logged-on client.
class Client {
public:
    explicit Client(std::shared_ptr<grpc::Channel> channel);

    void Login(const std::string& user, const std::string& password = "Password1");
    void UseToken(const std::string& token) { FToken = token; }
    const std::string& Token() const { return FToken; }

    // A call by its stub's operation: Call(&Stub::Lock, request).
    template<typename Request, typename Reply>
    Reply Call(grpc::Status (wire::RequirementsService::Stub::*operation)(grpc::ClientContext*,
                                                                          const Request&, Reply*),
               const Request& request) {
        grpc::ClientContext context;
        Prepare(context);
        Reply reply;
        const grpc::Status status = (FStub.get()->*operation)(&context, request, &reply);
        if (!status.ok()) throw Refused(status);
        return reply;
    }

    // A streamed answer, all of it.
    template<typename Request, typename Item>
    std::vector<Item> Stream(std::unique_ptr<grpc::ClientReader<Item>> (
                                 wire::RequirementsService::Stub::*operation)(grpc::ClientContext*,
                                                                              const Request&),
                             const Request& request) {
        grpc::ClientContext context;
        Prepare(context);
        auto reader = (FStub.get()->*operation)(&context, request);
        std::vector<Item> items;
        for (Item item; reader->Read(&item);)
            items.push_back(item);
        const grpc::Status status = reader->Finish();
        if (!status.ok()) throw Refused(status);
        return items;
    }

    // ---- what most tests need

    wire::Requirement Read(int id, int baseline = 0);
    std::vector<wire::Node> Children(int baseline, int node);
    // All below it, each node before its own children.
    std::vector<wire::Node> Branch(int baseline, int node);
    std::vector<std::string> ChildNames(int baseline, int node);
    std::vector<wire::Node> Path(int baseline, int id);
    void Lock(int id);
    void Unlock(int id);
    wire::SaveRequirementReply Save(wire::SaveRequirementRequest request);
    void Rename(int id, const std::string& name); // lock, save, unlock
    int Create(int project, int type, int parent, const std::string& name, int position);
    void Move(int baseline, int parent, int child, int position);
    void AddChild(int baseline, int parent, int child);
    int Remove(int id); // the number of nodes that went
    std::vector<wire::HistoryRevision> History(int id, int baseline = 0);
    wire::ListTracesReply Traces(int id);

    std::unique_ptr<wire::RequirementsService::Stub> FStub;

private:
    void Prepare(grpc::ClientContext& context) const;

    std::string FToken;
};

using Stub = wire::RequirementsService::Stub;

enum class Transport { InProcess, Loopback };

// Users "ann" and "ben" may edit, "ron" may read, "dora" is disabled, "mia" must
// change the password, "zoe" sees no project; all have the password "Password1".
// The project has the types SRS, with requirements One (with children One.A to
// One.C), Two and Three, and TST without any.
class ServiceFixture : public ::testing::Test {
public:
    explicit ServiceFixture(Transport transport = Transport::InProcess);

    std::shared_ptr<grpc::Channel> Channel();
    Client LoggedOn(const std::string& user);

    // The first requirement with that name.
    int Id(const std::string& name) const { return FIds.at(name); }

    TTempFolder FFolder;
    std::atomic<Backend::Instant> FNow = Backend::Instant{1'700'000'000} * 1'000'000;
    std::unique_ptr<Backend::EmbeddedServer> FServer;
    int FProject = 0, FSrs = 0, FTst = 0, FCurrent = 0, FFrozen = 0, FDeleted = 0;
    int FGroup = 0, FTeam = 0;
    std::map<std::string, int> FAttributes; // by name
    std::map<std::string, int> FUsers;

private:
    void Build(const std::string& path);
    void AddAttributes(Backend::BulkWriter& writer);
    void AddRequirements(Backend::BulkWriter& writer);

    Transport FTransport;
    int FPort = 0;
    std::map<std::string, int> FIds;
};

void Advance(ServiceFixture& fixture, int seconds);
