#include "VantixCore/Store/SQLiteStore.h"

#include "VantixCore/Store/SQLiteTable.h"

#include <utility>

namespace vantix {

namespace {

void extendToModel(SQLiteConnection& connection, const ObjectModel& model, bool infersMapping) {
    for (const auto& entity : model.entities) {
        SQLiteTable table(entity);
        table.create(connection);
        if (infersMapping) table.addMissingColumns(connection);
    }
}

}  // namespace

SQLiteStore::SQLiteStore(std::shared_ptr<Disk> disk, std::filesystem::path file, ObjectModel model, bool infersMapping,
                         std::shared_ptr<DispatchQueue> queue)
    : model_(std::move(model)),
      infersMapping_(infersMapping),
      queue_(std::move(queue)),
      file_(std::make_shared<SQLiteFile>(std::move(disk), std::move(file), [this](SQLiteConnection& connection) {
          extendToModel(connection, model_, infersMapping_);
      })) {}

SQLiteStore::~SQLiteStore() {
    if (file_->isOpen()) queue_->async([queue = queue_, file = std::move(file_)] {});
}

bool SQLiteStore::keeps(const std::filesystem::path& file, const ObjectModel& model, bool infersMapping) const {
    return file == file_->path() && model == model_ && infersMapping == infersMapping_;
}

std::optional<Error> SQLiteStore::perform(const SQLiteFile::Operation& operation) { return file_->perform(operation); }

}  // namespace vantix
