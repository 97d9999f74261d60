#include "VantixCore/Store/SQLiteConnection.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/CaseFolding.h"
#include "VantixCore/Store/StoreVersion.h"

#include <sqlite3.h>

#include <cstddef>
#include <new>
#include <utility>

namespace vantix {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void containsFolded(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return;
    try {
        std::string folded = foldCase(textOf(arguments[0]));
        sqlite3_result_int(context, folded.find(textOf(arguments[1])) != std::string::npos);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

int bind(sqlite3_stmt* statement, int position, const SQLiteParameter& parameter) {
    if (const auto* text = std::get_if<std::string_view>(&parameter)) {
        return sqlite3_bind_text64(statement, position, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    if (const auto* number = std::get_if<std::int64_t>(&parameter)) {
        return sqlite3_bind_int64(statement, position, *number);
    }
    return sqlite3_bind_null(statement, position);
}

std::optional<std::string> column(sqlite3_stmt* statement, int index) {
    if (sqlite3_column_type(statement, index) == SQLITE_NULL) return {};
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, index)));
}

SQLiteRow currentRow(sqlite3_stmt* statement) {
    SQLiteRow row;
    int count = sqlite3_column_count(statement);
    row.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) row.push_back(column(statement, index));
    return row;
}

/// Leaves a statement ready for its next execution.
struct ResetStatement {
    void operator()(sqlite3_stmt* statement) const {
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
    }
};

}  // namespace

SQLiteError SQLiteError::damage(const std::string& description) { return {SQLITE_CORRUPT, description}; }

bool SQLiteError::isDamage() const {
    switch (code_ & 0xFF) {
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
        case SQLITE_ERROR:
        case SQLITE_CONSTRAINT:
        case SQLITE_MISMATCH:
            return true;
        default:
            return false;
    }
}

NewerFile::NewerFile(std::int64_t version)
    : std::runtime_error("it is of version " + std::to_string(version) + ", newer than " +
                         std::to_string(storeVersion) + ", and stays as it is") {}

/// SQLite gives its side files the permissions of the database file, so that one is made first.
SQLiteConnection::SQLiteConnection(std::shared_ptr<Disk> disk, const std::filesystem::path& file, Duration busyTimeOut)
    : vfs_(std::move(disk)) {
    vfs_.disk().makeFile(file);
    open(file);
    auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(busyTimeOut).count();
    sqlite3_busy_timeout(database_.get(), static_cast<int>(milliseconds));
    check(sqlite3_create_function(database_.get(), "contains_folded", 2,
                                  SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr, containsFolded,
                                  nullptr, nullptr));
    checkVersion();
    configureJournal();
    markNewFile();
}

std::vector<SQLiteRow> SQLiteConnection::run(const std::string& sql, const std::vector<SQLiteParameter>& parameters) {
    std::unique_ptr<sqlite3_stmt, ResetStatement> statement(compiled(sql));
    int position = 0;
    for (const auto& parameter : parameters) check(bind(statement.get(), ++position, parameter));

    std::vector<SQLiteRow> rows;
    int code = sqlite3_step(statement.get());
    for (; code == SQLITE_ROW; code = sqlite3_step(statement.get())) rows.push_back(currentRow(statement.get()));
    if (code != SQLITE_DONE) check(code);
    return rows;
}

void SQLiteConnection::open(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    int code = sqlite3_open_v2(file.c_str(), &database,
                               SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
                               vfs_.name());
    database_.reset(database);
    check(code);
}

/// Before anything else, for the file of a newer version is not to be changed, not even as it is closed.
void SQLiteConnection::checkVersion() {
    check(sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr));
    std::int64_t version = std::stoll(run("PRAGMA user_version")[0][0].value());
    if (version > storeVersion) throw NewerFile(version);
    check(sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr));
}

void SQLiteConnection::markNewFile() {
    bool isNew = run("SELECT name FROM sqlite_master LIMIT 1").empty();
    if (isNew) run("PRAGMA user_version = " + std::to_string(storeVersion));
}

/// A committed change survives the end of the process as soon as the system has taken it. A sync for each change would
/// save the last ones from a loss of power as well, but makes them a hundred times slower; the file stays whole anyway.
void SQLiteConnection::configureJournal() {
    run("PRAGMA journal_mode = WAL");
    run("PRAGMA synchronous = NORMAL");
    // Else large selections would leave files outside the folder.
    run("PRAGMA temp_store = MEMORY");
}

sqlite3_stmt* SQLiteConnection::compiled(const std::string& sql) {
    auto& statement = statements_[sql];
    if (!statement) {
        sqlite3_stmt* made = nullptr;
        check(sqlite3_prepare_v3(database_.get(), sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                 &made, nullptr));
        statement.reset(made);
    }
    return statement.get();
}

void SQLiteConnection::check(int code) const {
    if (code != SQLITE_OK) throw SQLiteError(code, sqlite3_errmsg(database_.get()));
}

void SQLiteConnection::CloseDatabase::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

void SQLiteConnection::FinalizeStatement::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

}  // namespace vantix
