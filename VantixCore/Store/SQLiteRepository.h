#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixCore/Store/SQLiteConnection.h"
#include "VantixCore/Store/SQLiteStore.h"
#include "VantixCore/Store/SQLiteTable.h"

#include <memory>

namespace vantix {

/// The records of one entity, in a table of a store that it may share.
class SQLiteRepository final : public BaseRepository {
public:
    SQLiteRepository(ObjectModel::Entity entity, std::shared_ptr<SQLiteStore> store);

    void insert(std::map<std::string, std::string> values, std::function<void(Result<bool>)> completion) override;
    void insertEach(std::function<std::optional<std::map<std::string, std::string>>()> next,
                    std::function<void(Result<bool>)> completion) override;
    void fetch(std::optional<Predicate> predicate, std::optional<int> limit,
               std::function<void(Result<std::vector<Record>>)> completion) override;
    void batchDelete(FetchRequest request, std::function<void(Result<bool>)> completion) override;

private:
    template <typename T>
    void enqueue(std::function<T(const SQLiteTable&, SQLiteConnection&)> operation,
                 std::function<void(Result<T>)> completion);

    std::shared_ptr<const SQLiteTable> table_;
    std::shared_ptr<SQLiteStore> store_;
};

}  // namespace vantix
