#include "platform/sdk/LeaseKeeper.h"

#include <algorithm>

namespace Sdk {

using TClock = std::chrono::steady_clock;

TLeaseKeeper::TLeaseKeeper(std::shared_ptr<TConnection> connection, std::chrono::seconds lease,
                           std::chrono::seconds session)
    : FConnection(std::move(connection))
    , FLease(lease)
    , FSession(session)
    , FLastTry(TClock::now())
    , FThread([this] { Work(); }) {}

TLeaseKeeper::~TLeaseKeeper() {
    {
        const std::lock_guard guard(FMutex);
        FStopped = true;
    }
    FConnection->StopRenewal();
    FChange.notify_all();
    FThread.join();
}

void TLeaseKeeper::Granted(std::int32_t id) {
    const std::lock_guard guard(FMutex);
    const auto now = TClock::now();
    FLocks[id] = {now, now + FLease};
    FChange.notify_all();
}

void TLeaseKeeper::Released(std::int32_t id) {
    const std::lock_guard guard(FMutex);
    FLocks.erase(id);
}

TLeaseKeeper::EHold TLeaseKeeper::Holds(std::int32_t id) const {
    const std::lock_guard guard(FMutex);
    const auto lock = FLocks.find(id);
    if (lock == FLocks.end()) return EHold::None;
    return TClock::now() < lock->second.Ends ? EHold::Held : EHold::Lapsed;
}

void TLeaseKeeper::Renewed(const wire::KeepAliveReply& reply, TClock::time_point sent) {
    const std::lock_guard guard(FMutex);
    FLease = std::chrono::seconds(reply.lease_seconds());
    FDirectoryRevision = std::max(FDirectoryRevision, reply.directory_revision());
    const auto& held = reply.locked_ids();
    for (auto lock = FLocks.begin(); lock != FLocks.end();) {
        // A lock taken while the renewal was under way is not in its answer.
        const bool isLater = lock->second.Granted >= sent;
        const bool isHeld = std::find(held.begin(), held.end(), lock->first) != held.end();
        if (isHeld) lock->second.Ends = sent + FLease;
        lock = isHeld || isLater ? std::next(lock) : FLocks.erase(lock);
    }
}

bool TLeaseKeeper::DirectoryIsNewerThan(std::int64_t revision) const {
    const std::lock_guard guard(FMutex);
    return FDirectoryRevision > revision;
}

void TLeaseKeeper::Work() {
    std::unique_lock guard(FMutex);
    while (!FStopped) {
        if (TClock::now() < NextRenewal()) {
            FChange.wait_until(guard, NextRenewal());
            continue;
        }
        FLastTry = TClock::now();
        const auto sent = FLastTry;
        guard.unlock();
        const auto reply = FConnection->Renew();
        if (reply) Renewed(*reply, sent);
        guard.lock();
        FLastTryFailed = !reply;
    }
}

TClock::time_point TLeaseKeeper::NextRenewal() const {
    // After a failure sooner, so that a short break of the line costs no lock; but not
    // without end, whatever lease a server grants.
    constexpr TClock::duration shortest = std::chrono::milliseconds(50);
    const TClock::duration lease = FLastTryFailed ? FLease / 10 : FLease / 3;
    return FLastTry + std::max(FLocks.empty() ? FSession / 3 : lease, shortest);
}

} // namespace Sdk
