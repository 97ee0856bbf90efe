#include "backend/store/Migrations.h"

namespace Backend {

namespace {

int Applied(Database& database) {
    Rows rows = database.Query("select user_version from pragma_user_version");
    rows.Next();
    return rows.Int(0);
}

} // namespace

void Migrate(Database& database, std::span<const Migration> steps) {
    const int known = steps.empty() ? 0 : steps.back().Number;
    if (Applied(database) == known) return;
    for (;;) {
        Transaction transaction(database, Transaction::Kind::Write);
        // Read under the write lock: another process may be migrating too.
        const int applied = Applied(database);
        if (applied > known)
            throw StoreError(StoreError::Kind::NewerRelease,
                             "The requirements database " + database.Path() +
                                 " was written by a newer release. Install that release to open it.");
        if (applied == known) return;
        const Migration& step = steps[static_cast<std::size_t>(applied)];
        database.Execute(step.Statements);
        database.Execute("pragma user_version = " + std::to_string(step.Number));
        transaction.Commit();
    }
}

} // namespace Backend
