#include "VantixCore/Store/SQLiteTable.h"

#include "Platform/Values/CaseFolding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace vantix {

namespace {

/// A text between quotation marks that may stand in it, too.
std::string quoted(std::string_view text, char mark) {
    std::string result(1, mark);
    for (char character : text) {
        if (character == mark) result += mark;
        result += character;
    }
    return result + mark;
}

/// A name as SQL takes it, whatever it contains.
std::string quotedName(std::string_view name) { return quoted(name, '"'); }

/// Whether the column contains the word, the letter case of ASCII aside: what SQLite can keep an index of by itself,
/// whoever writes to the file.
std::string mentions(std::string_view attribute, std::string_view word) {
    return "instr(upper(" + quotedName(attribute) + "), upper(" + quoted(word, '\'') + ")) > 0";
}

template <typename Items, typename Words>
std::string listed(const Items& items, Words words) {
    std::string list;
    for (const auto& item : items) list += (list.empty() ? "" : ", ") + words(item);
    return list;
}

std::int64_t rowCount(std::optional<int> limit) {
    constexpr std::int64_t unlimited = -1;
    return limit ? std::max(*limit, 0) : unlimited;
}

std::string comparableOperand(const Predicate& predicate) {
    bool foldsCase = predicate.comparison == Predicate::Comparison::containsIgnoringCase;
    return foldsCase ? foldCase(predicate.operand) : predicate.operand;
}

std::vector<SQLiteParameter> matching(const std::optional<std::string>& operand) {
    std::vector<SQLiteParameter> parameters;
    if (operand) parameters.emplace_back(*operand);
    return parameters;
}

std::vector<SQLiteParameter> selection(const std::optional<std::string>& operand, std::optional<int> limit) {
    auto parameters = matching(operand);
    parameters.emplace_back(rowCount(limit));
    return parameters;
}

}  // namespace

SQLiteTable::SQLiteTable(ObjectModel::Entity entity)
    : entity_(std::move(entity)),
      table_(quotedName(entity_.name)),
      columns_(listed(entity_.attributes, quotedName)),
      insertion_("INSERT INTO " + table_ + " (" + columns_ + ") VALUES (" +
                 listed(entity_.attributes, [](const auto&) { return std::string("?"); }) + ")") {}

void SQLiteTable::create(SQLiteConnection& connection) const {
    auto definition = [](const std::string& attribute) { return quotedName(attribute) + " TEXT"; };
    connection.run("CREATE TABLE IF NOT EXISTS " + table_ + " (" + listed(entity_.attributes, definition) + ")");
}

void SQLiteTable::addMissingColumns(SQLiteConnection& connection) const {
    auto present = connection.run("SELECT name FROM pragma_table_info(?)", {std::string_view(entity_.name)});
    for (const auto& attribute : entity_.attributes) {
        bool isPresent =
            std::any_of(present.begin(), present.end(), [&](const auto& row) { return row[0] == attribute; });
        if (!isPresent) connection.run("ALTER TABLE " + table_ + " ADD COLUMN " + quotedName(attribute) + " TEXT");
    }
}

void SQLiteTable::createIndexes(SQLiteConnection& connection) const {
    for (const auto& [attribute, word] : entity_.indexes) {
        std::string name = entity_.name + " by " + attribute + (word ? " containing " + *word : "");
        std::string rows = word ? " WHERE " + mentions(attribute, *word) : "";
        try {
            connection.run("CREATE INDEX IF NOT EXISTS " + quotedName(name) + " ON " + table_ + " (" +
                           quotedName(attribute) + ")" + rows);
        } catch (const SQLiteError& problem) {
            if (problem.isDamage()) throw;
        }
    }
}

void SQLiteTable::insert(SQLiteConnection& connection, const std::map<std::string, std::string>& values) const {
    for (const auto& [attribute, value] : values) requireAttribute(attribute);

    std::vector<SQLiteParameter> parameters;
    for (const auto& attribute : entity_.attributes) {
        auto value = values.find(attribute);
        parameters.push_back(value == values.end() ? SQLiteParameter() : std::string_view(value->second));
    }
    connection.run(insertion_, parameters);
}

std::vector<Record> SQLiteTable::fetch(SQLiteConnection& connection, const std::optional<Predicate>& predicate,
                                       std::optional<int> limit) const {
    auto operand = predicate ? std::optional(comparableOperand(*predicate)) : std::nullopt;
    auto rows =
        connection.run("SELECT " + columns_ + " FROM " + table_ + condition(predicate) + " ORDER BY rowid LIMIT ?",
                       selection(operand, limit));
    std::vector<Record> records;
    records.reserve(rows.size());
    for (auto& row : rows) {
        Record& record = records.emplace_back();
        for (std::size_t index = 0; index < row.size(); ++index) {
            record.emplace(entity_.attributes[index], std::move(row[index]));
        }
    }
    return records;
}

void SQLiteTable::remove(SQLiteConnection& connection, const std::optional<Predicate>& predicate,
                         std::optional<int> limit) const {
    auto operand = predicate ? std::optional(comparableOperand(*predicate)) : std::nullopt;
    std::string deletion = "DELETE FROM " + table_;
    // Without a limit SQLite need not collect the rows first, and drops all of them at once.
    if (limit) {
        deletion += " WHERE rowid IN (SELECT rowid FROM " + table_ + condition(predicate) + " ORDER BY rowid LIMIT ?)";
        connection.run(deletion, selection(operand, limit));
    } else {
        connection.run(deletion + condition(predicate), matching(operand));
    }
}

void SQLiteTable::requireAttribute(const std::string& attribute) const {
    const auto& known = entity_.attributes;
    if (std::find(known.begin(), known.end(), attribute) != known.end()) return;
    throw std::invalid_argument("the entity " + entity_.name + " has no attribute " + attribute);
}

std::string SQLiteTable::condition(const std::optional<Predicate>& predicate) const {
    if (!predicate) return {};
    requireAttribute(predicate->attribute);
    switch (predicate->comparison) {
        case Predicate::Comparison::equals:
            return " WHERE " + quotedName(predicate->attribute) + " = ?";
        case Predicate::Comparison::containsIgnoringCase:
            return " WHERE " + indexed(*predicate) + "contains_folded(" + quotedName(predicate->attribute) + ", ?)";
    }
    return {};
}

/// The condition of the index that serves the predicate, which names it to SQLite; empty when there is none.
std::string SQLiteTable::indexed(const Predicate& predicate) const {
    bool isIndexed = std::find(entity_.indexes.begin(), entity_.indexes.end(),
                               ObjectModel::Index{predicate.attribute, predicate.operand}) != entity_.indexes.end();
    return isIndexed ? mentions(predicate.attribute, predicate.operand) + " AND " : "";
}

}  // namespace vantix
