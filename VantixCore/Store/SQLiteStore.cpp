#include "VantixCore/Store/SQLiteStore.h"

#include "Platform/Ports/RunningQueue.h"
#include "VantixCore/Store/SQLiteTable.h"

#include <utility>

namespace vantix {

namespace {

void extendToModel(SQLiteConnection& connection, const StoreDescription& description) {
    for (const auto& entity : description.model.entities) {
        SQLiteTable table(entity);
        table.create(connection);
        if (description.infersMapping) table.addMissingColumns(connection);
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
