#include "VantixCore/Store/SQLiteRepository.h"

#include <stdexcept>
#include <utility>

namespace vantix {

SQLiteRepository::SQLiteRepository(ObjectModel::Entity entity, std::shared_ptr<SQLiteStore> store)
    : table_(std::make_shared<const SQLiteTable>(std::move(entity))), store_(std::move(store)) {}

void SQLiteRepository::insert(std::map<std::string, std::string> values, std::function<void(Result<bool>)> completion) {
    enqueue<bool>(
        [values = std::move(values)](const SQLiteTable& table, SQLiteConnection& connection) {
            table.insert(connection, values);
            return true;
        },
        std::move(completion));
}

void SQLiteRepository::insertEach(std::function<std::optional<std::map<std::string, std::string>>()> next,
                                  std::function<void(Result<bool>)> completion) {
    store_->queue().async([table = table_, store = store_, next = std::move(next), completion = std::move(completion)] {
        while (auto values = next()) {
            auto error = store->perform([&](SQLiteConnection& connection) { table->insert(connection, *values); });
            if (completion) completion(error ? Result<bool>(std::move(*error)) : Result<bool>(true));
        }
    });
}

void SQLiteRepository::fetch(std::optional<Predicate> predicate, std::optional<int> limit,
                             std::function<void(Result<std::vector<Record>>)> completion) {
    enqueue<std::vector<Record>>(
        [predicate = std::move(predicate), limit](const SQLiteTable& table, SQLiteConnection& connection) {
            return table.fetch(connection, predicate, limit);
        },
        std::move(completion));
}

void SQLiteRepository::batchDelete(FetchRequest request, std::function<void(Result<bool>)> completion) {
    enqueue<bool>(
        [request = std::move(request)](const SQLiteTable& table, SQLiteConnection& connection) {
            if (request.entityName != table.name()) {
                throw std::invalid_argument("this repository does not hold the entity " + request.entityName);
            }
            table.remove(connection, request.predicate, request.fetchLimit);
            return true;
        },
        std::move(completion));
}

template <typename T>
void SQLiteRepository::enqueue(std::function<T(const SQLiteTable&, SQLiteConnection&)> operation,
                               std::function<void(Result<T>)> completion) {
    store_->queue().async(
        [table = table_, store = store_, operation = std::move(operation), completion = std::move(completion)] {
            T outcome{};
            auto error = store->perform([&](SQLiteConnection& connection) { outcome = operation(*table, connection); });
            if (!completion) return;
            completion(error ? Result<T>(std::move(*error)) : Result<T>(std::move(outcome)));
        });
}

}  // namespace vantix
