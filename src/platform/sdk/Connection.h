// The road to one server: the channel, the session token on every request, a time
// limit on every call and on every part of a stream, and the one place where a failed
// call becomes an exception.
#pragma once

#include "platform/sdk/Channels.h"
#include "platform/sdk/SdkCalls.h"
#include "quorane.grpc.pb.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <grpcpp/grpcpp.h>

namespace Sdk {

namespace wire = ::quorane::wire;

// Cancels a call that makes no progress for the limit, while it lives. A long stream on a
// slow line takes as long as it needs.
class TProgressWatch {
public:
    TProgressWatch(grpc::ClientContext& context, std::chrono::milliseconds limit);
    void Progress();

private:
    void Watch(const std::stop_token& stop, grpc::ClientContext& context, std::chrono::milliseconds limit);

    std::mutex FMutex;
    std::condition_variable_any FChanged;
    bool FProgress = false;
    std::jthread FThread;
};

class TConnection {
public:
    using TStub = wire::RequirementsService::Stub;
    template<class Request, class Reply>
    using TUnary = grpc::Status (TStub::*)(grpc::ClientContext*, const Request&, Reply*);

    template<class Request, class Item>
    using TStreaming = std::unique_ptr<grpc::ClientReader<Item>> (TStub::*)(grpc::ClientContext*,
                                                                            const Request&);

    // A request without an answer after the limit fails as a lost connection, and so does a
    // stream of which nothing has come or gone for as long.
    TConnection(std::string host, TChannelFactory factory,
                std::chrono::milliseconds callLimit = std::chrono::seconds(30));

    const std::string& Host() const { return FHost; }
    // Goes with every request from now on; empty: with none.
    void SetToken(std::string token);

    // The logon. An unreachable host is a failure with "RemoteServerException" and
    // without the mark of a lost connection.
    wire::LoginReply LogOn(const wire::LoginRequest& request);

    // A request that may reach the server twice without harm: after a broken
    // connection it is sent once more on a new channel. Both raise EOleSysError.
    template<class Request, class Reply>
    Reply Ask(std::string_view name, TUnary<Request, Reply> method, const Request& request) {
        return Unary(name, method, request, true);
    }

    // A request that must not reach the server twice: sent once more only when the
    // server has turned it away unread.
    template<class Request, class Reply>
    Reply Tell(std::string_view name, TUnary<Request, Reply> method, const Request& request) {
        return Unary(name, method, request, false);
    }

    // A request whose answer is a stream; gives all of it.
    template<class Request, class Item>
    std::vector<Item> AskStream(std::string_view name, TStreaming<Request, Item> method,
                                const Request& request) {
        std::vector<Item> items;
        RunStream(name, [&](TStub& stub, grpc::ClientContext& context, TProgressWatch& watch) {
            items.clear();
            const auto reader = (stub.*method)(&context, request);
            for (Item item; reader->Read(&item); watch.Progress())
                items.push_back(std::move(item));
            return reader->Finish();
        });
        return items;
    }

    // A request that is a stream.
    template<class Item, class Reply>
    Reply AskWithStream(std::string_view name,
                        std::unique_ptr<grpc::ClientWriter<Item>> (TStub::*method)(grpc::ClientContext*,
                                                                                   Reply*),
                        const std::vector<Item>& items) {
        Reply reply;
        RunStream(name, [&](TStub& stub, grpc::ClientContext& context, TProgressWatch& watch) {
            reply.Clear();
            const auto writer = (stub.*method)(&context, &reply);
            for (const Item& item : items) {
                if (!writer->Write(item)) break;
                watch.Progress();
            }
            writer->WritesDone();
            return writer->Finish();
        });
        return reply;
    }

    // The one call for another thread: the lease keeper's. Neither reconnects nor
    // raises nor is told to observers. StopRenewal, from any thread, ends the one
    // that is running and every later one.
    std::optional<wire::KeepAliveReply> Renew();
    void StopRenewal();

private:
    using TAttempt = std::function<grpc::Status(TStub&, grpc::ClientContext&)>;
    using TStreamAttempt = std::function<grpc::Status(TStub&, grpc::ClientContext&, TProgressWatch&)>;
    static constexpr auto NoLimit = std::chrono::milliseconds::max();

    template<class Request, class Reply>
    Reply Unary(std::string_view name, TUnary<Request, Reply> method, const Request& request,
                bool repeatable) {
        Reply reply;
        Run(name, repeatable, [&](TStub& stub, grpc::ClientContext& context) {
            reply.Clear();
            return (stub.*method)(&context, request, &reply);
        });
        return reply;
    }

    void Run(std::string_view name, bool repeatable, const TAttempt& attempt);
    // A stream may reach the server twice.
    void RunStream(std::string_view name, const TStreamAttempt& attempt);
    void Repeat(std::string_view name, bool repeatable, std::chrono::milliseconds limit,
                const TAttempt& attempt);
    grpc::Status RunOnce(std::string_view name, std::chrono::milliseconds limit, const TAttempt& attempt);
    // Makes the channel anew; gives false when the server cannot be reached.
    bool Connect();
    // NoLimit for a call that something else ends.
    void Prepare(grpc::ClientContext& context, std::chrono::milliseconds limit);
    std::shared_ptr<TStub> Stub();

    const std::string FHost;
    const TChannelFactory FFactory;
    const std::chrono::milliseconds FCallLimit;
    std::shared_ptr<grpc::Channel> FChannel;

    // What the lease keeper's thread uses too.
    std::mutex FMutex;
    std::shared_ptr<TStub> FStub;
    std::string FToken;
    grpc::ClientContext* FRenewal = nullptr;
    bool FRenewalStopped = false;
};

} // namespace Sdk
