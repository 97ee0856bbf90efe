// One connection to a requirements database and the statements prepared on it. It
// alone knows the SQL library. A connection and its rows belong to one thread at a
// time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace Backend {

// A failure of the database. The message is a sentence for the user that names the
// file and what to do.
class StoreError : public std::runtime_error {
public:
    enum class Kind {
        Missing,
        Corrupt,
        NotADatabase,
        NewerRelease,
        ReadOnly,
        Locked,
        Full,
        CannotOpen,
        Disk,
        Constraint,
        Other
    };

    StoreError(Kind kind, const std::string& message)
        : std::runtime_error(message)
        , FKind(kind) {}
    Kind Reason() const { return FKind; }

private:
    Kind FKind;
};

// An SQL text that lives as long as the program, so that its address can stand for
// the prepared statement. Parameters are $1, $2, ...
class Sql {
public:
    consteval Sql(const char* text)
        : FText(text) {}
    const char* Text() const { return FText; }

private:
    const char* FText;
};

// Binary data in a parameter; a string_view binds as text.
struct Bytes {
    std::string_view Data;
};

class Database;

// The result of a query. Next steps to a row; the columns can be read until the
// next step. The read ends with the last row or with this object.
class Rows {
public:
    Rows(Rows&& other) noexcept;
    Rows& operator=(Rows&&) = delete;
    ~Rows();

    bool Next();

    bool IsNull(int column) const;
    std::int64_t Int64(int column) const; // null: 0
    int Int(int column) const { return static_cast<int>(Int64(column)); }
    bool Bool(int column) const { return Int64(column) != 0; }
    double Real(int column) const;
    std::string Text(int column) const { return std::string(View(column)); }
    // Text or bytes, valid until the next step; null: empty.
    std::string_view View(int column) const;

private:
    friend class Database;
    Rows(Database& database, sqlite3_stmt* statement, bool owned);

    Database* FDatabase;
    sqlite3_stmt* FStatement; // empty when moved from
    bool FOwned;              // a statement of its own, as the prepared one was in use
    bool FEnded = false;
};

class Database {
public:
    enum class Mode { OpenOrCreate, OpenExisting };

    // Raises StoreError. A file that is no requirements database, or one that a
    // newer release wrote, is refused and left as it is.
    explicit Database(const std::string& path, Mode mode = Mode::OpenOrCreate);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    const std::string& Path() const { return FPath; }

    // Starts a query; the first row is reached by Next.
    template<typename... Arguments> Rows Query(Sql sql, const Arguments&... arguments) {
        Rows rows = Start(sql);
        int index = 0;
        (BindOne(rows.FStatement, ++index, arguments), ...);
        return rows;
    }

    // Runs a statement to its end and gives the number of rows that it changed.
    template<typename... Arguments> int Run(Sql sql, const Arguments&... arguments) {
        Rows rows = Query(sql, arguments...);
        while (rows.Next()) {
        }
        return Changes();
    }

    // Runs statements that take no parameters and give no rows.
    void Execute(const std::string& statements);

    // The key that the last insert gave.
    std::int64_t LastKey() const;

    // Refuses to grow beyond so many pages, as a full disk does.
    void LimitPages(int pages);

private:
    friend class Rows;
    friend class Transaction;

    Rows Start(Sql sql);
    int Changes() const;
    [[noreturn]] void Raise(int code) const;
    void Check(int code) const;
    sqlite3_stmt* Prepare(const char* text, bool lasting);
    void Configure();

    void BindOne(sqlite3_stmt* statement, int index, std::int64_t value);
    void BindOne(sqlite3_stmt* statement, int index, int value) {
        BindOne(statement, index, std::int64_t{value});
    }
    void BindOne(sqlite3_stmt* statement, int index, bool value) {
        BindOne(statement, index, std::int64_t{value});
    }
    void BindOne(sqlite3_stmt* statement, int index, double value);
    void BindOne(sqlite3_stmt* statement, int index, std::string_view value);
    void BindOne(sqlite3_stmt* statement, int index, const std::string& value) {
        BindOne(statement, index, std::string_view(value));
    }
    void BindOne(sqlite3_stmt* statement, int index, Bytes value);
    void BindOne(sqlite3_stmt* statement, int index, std::nullopt_t);
    template<typename T> void BindOne(sqlite3_stmt* statement, int index, const std::optional<T>& value) {
        value ? BindOne(statement, index, *value) : BindOne(statement, index, std::nullopt);
    }

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    struct Close {
        void operator()(sqlite3* handle) const;
    };

    std::string FPath;
    std::unique_ptr<sqlite3, Close> FHandle;
    std::unordered_map<const char*, std::unique_ptr<sqlite3_stmt, Finalize>> FStatements;
};

// A transaction from construction to Commit; without one it is rolled back. Write
// takes the right to write at once, so that a read-then-write cannot fail half-way.
class Transaction {
public:
    enum class Kind { Read, Write };

    Transaction(Database& database, Kind kind);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    // Raises StoreError; everything is rolled back then.
    void Commit();

private:
    Database& FDatabase;
    bool FOpen = true;
};

} // namespace Backend
