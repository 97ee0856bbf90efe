#include "backend/rules/Connection.h"

#include "backend/store/Migrations.h"

namespace Backend {

namespace {

// More than the calls that usually run at once would only hold file handles.
constexpr std::size_t MaxIdle = 8;

} // namespace

Connection::Connection(const std::string& path, int numberBlock, Database::Mode mode)
    : Db(path, mode)
    , Numbers(Db, numberBlock)
    , Accounts(Db)
    , Projects(Db)
    , Types(Db)
    , Trees(Db)
    , Requirements(Db)
    , Discussions(Db)
    , Traces(Db)
    , Glossaries(Db)
    , Images(Db) {
    Migrate(Db);
}

ConnectionPool::Lease::Lease(ConnectionPool& pool, Transaction::Kind kind)
    : FPool(pool)
    , FWriting(pool.FWriters, std::defer_lock)
    , FConnection(pool.Take()) {
    // The database's own waiting is by polling, which is neither fair nor quick.
    if (kind == Transaction::Kind::Write) FWriting.lock();
    FTransaction = std::make_unique<Transaction>(FConnection->Db, kind);
}

ConnectionPool::Lease::~Lease() {
    FTransaction.reset();
    FPool.Give(std::move(FConnection));
}

std::unique_ptr<Connection> ConnectionPool::Take() {
    {
        const std::lock_guard guard(FGuard);
        if (!FIdle.empty()) {
            auto connection = std::move(FIdle.back());
            FIdle.pop_back();
            return connection;
        }
    }
    return std::make_unique<Connection>(FPath, 1, Database::Mode::OpenExisting);
}

void ConnectionPool::Give(std::unique_ptr<Connection> connection) {
    const std::lock_guard guard(FGuard);
    if (FIdle.size() < MaxIdle) FIdle.push_back(std::move(connection));
}

void ConnectionPool::Close() {
    const std::lock_guard guard(FGuard);
    FIdle.clear();
}

} // namespace Backend
