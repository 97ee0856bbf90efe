// One connection to the database with all tables on it, and the pool that the calls
// of a server share.
#pragma once

#include "backend/store/AccountTable.h"
#include "backend/store/DiscussionTable.h"
#include "backend/store/GlossaryTable.h"
#include "backend/store/ProjectTable.h"
#include "backend/store/RequirementTable.h"
#include "backend/store/TraceTable.h"
#include "backend/store/TreeTable.h"
#include "backend/store/TypeTable.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Backend {

struct Connection {
    // Opens the file and brings it to this release's tables. NumberBlock: how many
    // object numbers are drawn at once; more than one only where a single
    // transaction is the connection's whole life. Raises StoreError.
    explicit Connection(const std::string& path, int numberBlock = 1,
                        Database::Mode mode = Database::Mode::OpenOrCreate);

    Database Db;
    NumberSequence Numbers;
    AccountTable Accounts;
    ProjectTable Projects;
    TypeTable Types;
    TreeTable Trees;
    RequirementTable Requirements;
    DiscussionTable Discussions;
    TraceTable Traces;
    GlossaryTable Glossaries;
    ImageTable Images;
};

class ConnectionPool {
public:
    // The database must exist.
    explicit ConnectionPool(std::string path)
        : FPath(std::move(path)) {}

    // A connection in a transaction, given back with this object. A writing one
    // waits for the other writers of this process in their order; Commit makes it
    // lasting, without it nothing is written.
    class Lease {
    public:
        Lease(ConnectionPool& pool, Transaction::Kind kind);
        ~Lease();

        Connection* operator->() { return FConnection.get(); }
        Connection& operator*() { return *FConnection; }
        void Commit() { FTransaction->Commit(); }

    private:
        ConnectionPool& FPool;
        std::unique_lock<std::mutex> FWriting;
        std::unique_ptr<Connection> FConnection;
        std::unique_ptr<Transaction> FTransaction;
    };

    // Closes the idle connections; no lease may be out.
    void Close();

    Lease Read() { return Lease(*this, Transaction::Kind::Read); }
    Lease Write() { return Lease(*this, Transaction::Kind::Write); }

private:
    std::unique_ptr<Connection> Take();
    void Give(std::unique_ptr<Connection> connection);

    std::string FPath;
    std::mutex FWriters;
    std::mutex FGuard;
    std::vector<std::unique_ptr<Connection>> FIdle;
};

} // namespace Backend
