// What the session holds on the server for a limited time, the session itself and
// its edit locks, and the thread that renews it before the time is over.
#pragma once

#include "platform/sdk/Connection.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace Sdk {

class TLeaseKeeper {
public:
    enum class EHold { None, Held, Lapsed };

    // Renews from now on: often while there are locks, else as seldom as the session
    // bears. The connection has its token already.
    TLeaseKeeper(std::shared_ptr<TConnection> connection, std::chrono::seconds lease,
                 std::chrono::seconds session);
    TLeaseKeeper(const TLeaseKeeper&) = delete;
    TLeaseKeeper& operator=(const TLeaseKeeper&) = delete;
    // Ends a renewal that is under way and waits for the thread.
    ~TLeaseKeeper();

    // The server granted, or told that it still grants, the lock just now.
    void Granted(std::int32_t id);
    void Released(std::int32_t id);
    // Lapsed: nobody knows whether the server still has the lock, because no renewal
    // came through for as long as the lease is. Costs no round trip.
    EHold Holds(std::int32_t id) const;
    // What a renewal brought, sent at that moment.
    void Renewed(const wire::KeepAliveReply& reply, std::chrono::steady_clock::time_point sent);

    // Whether a renewal has told of users and groups newer than that revision.
    bool DirectoryIsNewerThan(std::int64_t revision) const;

private:
    struct TLock {
        std::chrono::steady_clock::time_point Granted;
        std::chrono::steady_clock::time_point Ends;
    };

    void Work();
    std::chrono::steady_clock::time_point NextRenewal() const;

    const std::shared_ptr<TConnection> FConnection;
    mutable std::mutex FMutex;
    std::condition_variable FChange;
    bool FStopped = false;
    std::chrono::steady_clock::duration FLease;
    const std::chrono::steady_clock::duration FSession;
    std::chrono::steady_clock::time_point FLastTry;
    bool FLastTryFailed = false;
    std::map<std::int32_t, TLock> FLocks;
    std::int64_t FDirectoryRevision = 0;
    std::thread FThread;
};

} // namespace Sdk
