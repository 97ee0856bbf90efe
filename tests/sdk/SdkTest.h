// A small project on a server of the test's own, and the SDK as a client starts it.
#pragma once

#include "backend/service/BulkWriter.h"
#include "backend/service/EmbeddedServer.h"
#include "contracts/Exceptions.h"
#include "platform/sdk/ClassObjects.h"
#include "platform/sdk/SdkCalls.h"
#include "server/Quorane_TLB.h"
#include "support/TempFolder.h"
#include "support/TinyPicture.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace Quorane_TLB;

// The numbers of what the project "Heating" holds.
struct TSample {
    int Ann = 0, Ben = 0;
    int Group = 0;
    int Project = 0, FrozenBaseline = 0;
    int Software = 0, Usage = 0; // requirement types
    int Start = 0, Stop = 0;     // first-level requirements of Software
    int Warm = 0, Cold = 0;      // children of Start
    int Deep = 0;                // child of Cold
    int Evening = 0;             // first-level requirement of Usage
};

class TSdkTest : public ::testing::Test {
protected:
    TSdkTest();
    ~TSdkTest() override;

    Handle<IQuoraneServer> Server(const std::u16string& host = u"local");
    // The password of everybody is "secret".
    Handle<ISession> LogOn(const std::u16string& user = u"ann");

    Handle<IProject> Project(const Handle<ISession>& session);
    Handle<IBaseline> Baseline(const Handle<ISession>& session, const std::u16string& name);
    Handle<IRequirementTreeNode> Root(const Handle<ISession>& session);
    Handle<IRequirementTreeNode> Node(const Handle<ISession>& session, int id);

    // Makes the database anew.
    void Fill();
    // Starts the server with FOptions.
    void Restart();

    TTempFolder FFolder;
    Backend::ServerOptions FOptions;
    TSample FSample;
    std::unique_ptr<Backend::EmbeddedServer> FServer;
    // Where the server also listens, if a test has asked it to; clients reach it there
    // under the name "port".
    int FPort = 0;
    Sdk::TCallRecorder FCalls;

private:
    std::shared_ptr<grpc::Channel> Channel(const std::string& host);
};

std::int32_t NumberOf(const Handle<IQuoraneObjectID>& id);
std::vector<std::u16string> Names(const Handle<IStCollection>& objects);
template<class Interface> Handle<Interface> Item(const Handle<IStCollection>& collection, int index) {
    return Cast<Interface>(collection->Get_Item(Variant(std::int32_t{index})).AsDispatch());
}

// The message of the EOleSysError that the action raises; empty when it raises none.
std::string FailureOf(const std::function<void()>& action);
