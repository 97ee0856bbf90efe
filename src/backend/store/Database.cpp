#include "backend/store/Database.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>

namespace Backend {

namespace {

constexpr int BusyMilliseconds = 5000;
constexpr int ApplicationId = 0x51524e31; // "QRN1" in the file's header
constexpr std::string_view FileHeader = "SQLite format 3";

StoreError::Kind KindOf(int code) {
    switch (code & 0xff) {
    case SQLITE_CORRUPT:
        return StoreError::Kind::Corrupt;
    case SQLITE_NOTADB:
        return StoreError::Kind::NotADatabase;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return StoreError::Kind::ReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return StoreError::Kind::Locked;
    case SQLITE_FULL:
        return StoreError::Kind::Full;
    case SQLITE_CANTOPEN:
        return StoreError::Kind::CannotOpen;
    case SQLITE_IOERR:
        return StoreError::Kind::Disk;
    case SQLITE_CONSTRAINT:
        return StoreError::Kind::Constraint;
    default:
        return StoreError::Kind::Other;
    }
}

std::string Sentence(StoreError::Kind kind, const std::string& path, const std::string& detail) {
    const std::string file = "The requirements database " + path;
    switch (kind) {
    case StoreError::Kind::Corrupt:
        return file + " is damaged. Restore it from a backup, or move it away to start with an empty one.";
    case StoreError::Kind::NotADatabase:
        return "The file " + path +
               " is not a requirements database. Move it away, or name another file; it was not changed.";
    case StoreError::Kind::ReadOnly:
        return file + " cannot be written. Make the file and its folder writable for your user.";
    case StoreError::Kind::Locked:
        return file + " is locked by another program. Close that program and try again.";
    case StoreError::Kind::Full:
        return "The disk that holds " + path + " is full. Make room on it and try again.";
    case StoreError::Kind::CannotOpen:
        return file + " cannot be opened. See that its folder exists and that your user may write there.";
    case StoreError::Kind::Disk:
        return file + " cannot be read or written (" + detail + "). Check the disk that holds it.";
    default:
        return file + " reported an error: " + detail + ".";
    }
}

} // namespace

void Database::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}
void Database::Close::operator()(sqlite3* handle) const {
    sqlite3_close(handle);
}

Database::Database(const std::string& path, Mode mode)
    : FPath(path) {
    // The library takes an empty or missing file for a new database, and reports a
    // text file only at the first read: that is found out before it touches it.
    std::error_code ignored;
    if (mode == Mode::OpenExisting && !std::filesystem::exists(path, ignored))
        throw StoreError(StoreError::Kind::Missing,
                         "There is no requirements database " + path +
                             ". Make one with \"quorane-admin create\", or name another file.");
    if (std::filesystem::exists(path, ignored) && std::filesystem::file_size(path, ignored) > 0) {
        std::ifstream file(path, std::ios::binary);
        std::string header(FileHeader.size(), '\0');
        file.read(header.data(), static_cast<std::streamsize>(header.size()));
        if (file && header != FileHeader) Raise(SQLITE_NOTADB);
    }
    const int create = mode == Mode::OpenOrCreate ? SQLITE_OPEN_CREATE : 0;
    sqlite3* handle = nullptr;
    const int code =
        sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | create, nullptr);
    FHandle.reset(handle);
    if (code != SQLITE_OK) Raise(code);
    Configure();
}

Database::~Database() = default;

void Database::Configure() {
    sqlite3_extended_result_codes(FHandle.get(), 1);
    Check(sqlite3_busy_timeout(FHandle.get(), BusyMilliseconds));
    // A file opened without the right to write would fail only at the first save.
    if (sqlite3_db_readonly(FHandle.get(), "main") == 1) Raise(SQLITE_READONLY);
    // Somebody else's database must not even be switched to another journal.
    Rows owner =
        Query("select (select application_id from pragma_application_id), count(*) from sqlite_schema");
    owner.Next();
    const bool empty = owner.Int64(1) == 0;
    const bool ours = owner.Int64(0) == ApplicationId;
    owner.Next();
    if (!empty && !ours) Raise(SQLITE_NOTADB);
    // Two rows with a page of text fit on a page of 8192; it counts for new files.
    if (empty) Execute("pragma page_size = 8192; pragma application_id = " + std::to_string(ApplicationId));
    Execute("pragma journal_mode = wal; pragma synchronous = full; pragma foreign_keys = on;"
            "pragma cache_size = -16384; pragma temp_store = memory");
}

void Database::Execute(const std::string& statements) {
    Check(sqlite3_exec(FHandle.get(), statements.c_str(), nullptr, nullptr, nullptr));
}

void Database::Raise(int code) const {
    const StoreError::Kind kind = KindOf(code);
    const std::string detail = FHandle ? sqlite3_errmsg(FHandle.get()) : sqlite3_errstr(code);
    throw StoreError(kind, Sentence(kind, FPath, detail));
}

void Database::Check(int code) const {
    if (code != SQLITE_OK) Raise(code);
}

sqlite3_stmt* Database::Prepare(const char* text, bool lasting) {
    sqlite3_stmt* statement = nullptr;
    const unsigned flags = lasting ? SQLITE_PREPARE_PERSISTENT : 0;
    Check(sqlite3_prepare_v3(FHandle.get(), text, -1, flags, &statement, nullptr));
    return statement;
}

Rows Database::Start(Sql sql) {
    auto& prepared = FStatements[sql.Text()];
    if (!prepared) prepared.reset(Prepare(sql.Text(), true));
    // The same text can be under way further up the stack, as in a recursive walk.
    if (sqlite3_stmt_busy(prepared.get())) return Rows(*this, Prepare(sql.Text(), false), true);
    return Rows(*this, prepared.get(), false);
}

int Database::Changes() const {
    return sqlite3_changes(FHandle.get());
}
std::int64_t Database::LastKey() const {
    return sqlite3_last_insert_rowid(FHandle.get());
}

void Database::LimitPages(int pages) {
    Execute("pragma max_page_count = " + std::to_string(pages));
}

namespace {

// SQLite numbers $1, $2 by their first appearance in the text, which need not be
// their order.
int Parameter(sqlite3_stmt* statement, int index) {
    const char name[] = {'$', static_cast<char>('0' + index % 10), '\0'};
    if (index < 10) return sqlite3_bind_parameter_index(statement, name);
    const std::string longer = "$" + std::to_string(index);
    return sqlite3_bind_parameter_index(statement, longer.c_str());
}

} // namespace

void Database::BindOne(sqlite3_stmt* statement, int index, std::int64_t value) {
    Check(sqlite3_bind_int64(statement, Parameter(statement, index), value));
}

void Database::BindOne(sqlite3_stmt* statement, int index, double value) {
    Check(sqlite3_bind_double(statement, Parameter(statement, index), value));
}

void Database::BindOne(sqlite3_stmt* statement, int index, std::string_view value) {
    const char* data = value.data() ? value.data() : "";
    Check(sqlite3_bind_text64(statement, Parameter(statement, index), data, value.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void Database::BindOne(sqlite3_stmt* statement, int index, Bytes value) {
    const char* data = value.Data.data() ? value.Data.data() : "";
    Check(sqlite3_bind_blob64(statement, Parameter(statement, index), data, value.Data.size(),
                              SQLITE_TRANSIENT));
}

void Database::BindOne(sqlite3_stmt* statement, int index, std::nullopt_t) {
    Check(sqlite3_bind_null(statement, Parameter(statement, index)));
}

Rows::Rows(Database& database, sqlite3_stmt* statement, bool owned)
    : FDatabase(&database)
    , FStatement(statement)
    , FOwned(owned) {}

Rows::Rows(Rows&& other) noexcept
    : FDatabase(other.FDatabase)
    , FStatement(other.FStatement)
    , FOwned(other.FOwned)
    , FEnded(other.FEnded) {
    other.FStatement = nullptr;
}

Rows::~Rows() {
    if (!FStatement) return;
    if (FOwned) {
        sqlite3_finalize(FStatement);
    } else {
        // A statement that is not reset keeps its read transaction open.
        sqlite3_reset(FStatement);
        sqlite3_clear_bindings(FStatement);
    }
}

bool Rows::Next() {
    if (FEnded) return false;
    const int code = sqlite3_step(FStatement);
    if (code == SQLITE_ROW) return true;
    FEnded = true;
    if (code != SQLITE_DONE) {
        // The message belongs to the failed step: it is read before the reset.
        FDatabase->Raise(code);
    }
    sqlite3_reset(FStatement);
    return false;
}

bool Rows::IsNull(int column) const {
    return sqlite3_column_type(FStatement, column) == SQLITE_NULL;
}
std::int64_t Rows::Int64(int column) const {
    return sqlite3_column_int64(FStatement, column);
}
double Rows::Real(int column) const {
    return sqlite3_column_double(FStatement, column);
}

std::string_view Rows::View(int column) const {
    const void* data = sqlite3_column_blob(FStatement, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(FStatement, column));
    return data ? std::string_view(static_cast<const char*>(data), size) : std::string_view();
}

Transaction::Transaction(Database& database, Kind kind)
    : FDatabase(database) {
    kind == Kind::Write ? FDatabase.Run("begin immediate") : FDatabase.Run("begin");
}

Transaction::~Transaction() {
    // A failing statement may have rolled back already.
    if (FOpen && !sqlite3_get_autocommit(FDatabase.FHandle.get()))
        sqlite3_exec(FDatabase.FHandle.get(), "rollback", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
    FDatabase.Run("commit");
    FOpen = false;
}

} // namespace Backend
