#pragma once

#include "Platform/Ports/Clock.h"
#include "VantixCore/Store/SQLiteVFS.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace vantix {

/// Why SQLite refused.
class SQLiteError : public std::runtime_error {
public:
    SQLiteError(int code, const std::string& description) : std::runtime_error(description), code_(code) {}
    /// Of a file that contradicts itself without SQLite's noticing.
    static SQLiteError damage(const std::string& description);

    /// Whether it will be so for ever: the file is no database, a damaged one, or one of another shape, with which the
    /// statements make no sense. A full disk, say, or another process that holds the file, is none.
    bool isDamage() const;

private:
    int code_;
};

/// The file is of a version that this program does not know. It was left as it is.
class NewerFile : public std::runtime_error {
public:
    explicit NewerFile(std::int64_t version);
};

/// A text or a number; texts are read until the call that takes them returns.
using SQLiteParameter = std::variant<std::monostate, std::string_view, std::int64_t>;

/// The columns of one row as texts; NULL is absent.
using SQLiteRow = std::vector<std::optional<std::string>>;

/// One open database file, with write-ahead logging. Used by one thread at a time. Whatever fails throws SQLiteError,
/// or what the disk throws.
///
/// Statements may call `contains_folded(text, folded)`: whether the text, letter case removed, contains the operand,
/// from which the caller has removed it already (foldCase). NULL contains nothing.
class SQLiteConnection {
public:
    /// Makes the file, readable for this user alone, when it is missing. Statements wait for `busyTimeOut` while
    /// another process holds it. Throws NewerFile, too.
    SQLiteConnection(std::shared_ptr<Disk> disk, const std::filesystem::path& file, Duration busyTimeOut);

    /// Runs one statement with its parameters in order. The compiled statement is kept, so the text should not vary
    /// with the data.
    std::vector<SQLiteRow> run(const std::string& sql, const std::vector<SQLiteParameter>& parameters = {});

private:
    struct CloseDatabase {
        void operator()(sqlite3* database) const;
    };
    struct FinalizeStatement {
        void operator()(sqlite3_stmt* statement) const;
    };

    void open(const std::filesystem::path& file);
    void checkVersion();
    void configureJournal();
    void markNewFile();
    sqlite3_stmt* compiled(const std::string& sql);
    void check(int code) const;

    SQLiteVFS vfs_;
    std::unique_ptr<sqlite3, CloseDatabase> database_;
    std::map<std::string, std::unique_ptr<sqlite3_stmt, FinalizeStatement>> statements_;
};

}  // namespace vantix
