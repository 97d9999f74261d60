#include "VantixCore/Store/SQLiteStore.h"

#include "Platform/Ports/RunningQueue.h"
#include "VantixCore/Store/SQLiteTable.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace vantix {

namespace {

/// A file that only lacks what may not be added is sound.
void requireColumns(SQLiteConnection& connection, const ObjectModel::Entity& entity) {
    auto present = connection.run("SELECT name FROM pragma_table_info(?)", {std::string_view(entity.name)});
    for (const auto& attribute : entity.attributes) {
        bool isPresent = std::ranges::any_of(present, [&](const SQLiteRow& row) { return row[0] == attribute; });
        if (!isPresent) throw std::runtime_error("the entity " + entity.name + " lacks the attribute " + attribute);
    }
}

void extendToModel(SQLiteConnection& connection, const StoreDescription& description) {
    for (const auto& entity : description.model.entities) {
        SQLiteTable table(entity);
        table.create(connection);
        if (description.infersMapping) {
            table.addMissingColumns(connection);
        } else {
            requireColumns(connection, entity);
        }
        // Fails where the table has another shape, before anything is put into it.
        table.fetch(connection, {}, 0);
        table.createIndexes(connection);
    }
}

}  // namespace

SQLiteStore::SQLiteStore(std::shared_ptr<Disk> disk, StoreDescription description, std::shared_ptr<DispatchQueue> queue)
    : description_(std::move(description)),
      queue_(std::move(queue)),
      file_(std::make_shared<SQLiteFile>(
          std::move(disk), description_.file, description_.busyTimeOut,
          [description = description_](SQLiteConnection& connection) { extendToModel(connection, description); })) {}

SQLiteStore::~SQLiteStore() {
    if (file_->isOpen()) queue_->async([queue = queue_, file = std::move(file_)] {});
}

std::optional<Error> SQLiteStore::perform(const SQLiteFile::Operation& operation) {
    assertOnQueue(*queue_, "SQLiteStore::perform");
    return file_->perform(operation);
}

}  // namespace vantix
