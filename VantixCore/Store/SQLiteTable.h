#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixCore/ObjectModel.h"
#include "VantixCore/Store/SQLiteConnection.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// The table of one entity: a text column for each attribute, rows in the order of insertion. Throws SQLiteError, and
/// std::invalid_argument for an attribute that the entity does not have.
class SQLiteTable {
public:
    explicit SQLiteTable(ObjectModel::Entity entity);

    const std::string& name() const { return entity_.name; }

    /// Makes the table when it is missing.
    void create(SQLiteConnection& connection) const;
    /// Adds the columns that the table lacks.
    void addMissingColumns(SQLiteConnection& connection) const;
    /// Makes the indexes that are missing. A file that cannot take them, being full, say, is used without.
    void createIndexes(SQLiteConnection& connection) const;

    void insert(SQLiteConnection& connection, const std::map<std::string, std::string>& values) const;
    std::vector<Record> fetch(SQLiteConnection& connection, const std::optional<Predicate>& predicate,
                              std::optional<int> limit) const;
    void remove(SQLiteConnection& connection, const std::optional<Predicate>& predicate,
                std::optional<int> limit) const;

private:
    void requireAttribute(const std::string& attribute) const;
    std::string condition(const std::optional<Predicate>& predicate) const;
    std::string indexed(const Predicate& predicate) const;

    ObjectModel::Entity entity_;
    std::string table_;
    std::string columns_;
    std::string insertion_;
};

}  // namespace vantix
