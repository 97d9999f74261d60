#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "VantixCore/BaseRepository.h"
#include "VantixCore/Store/SQLiteFile.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace vantix {

/// One database file that holds what a model describes, and the serial queue on which alone it is touched. May be
/// dropped on any thread: the file is closed on the queue.
class SQLiteStore {
public:
    /// Touches nothing yet. `infersMapping`: attributes that an older file lacks are added to it.
    SQLiteStore(std::shared_ptr<Disk> disk, std::filesystem::path file, ObjectModel model, bool infersMapping,
                std::shared_ptr<DispatchQueue> queue);
    ~SQLiteStore();

    /// Whether this store keeps that file in that way.
    bool keeps(const std::filesystem::path& file, const ObjectModel& model, bool infersMapping) const;

    DispatchQueue& queue() const { return *queue_; }

    /// See SQLiteFile::perform. On the queue only.
    std::optional<Error> perform(const SQLiteFile::Operation& operation);

private:
    ObjectModel model_;
    bool infersMapping_;
    std::shared_ptr<DispatchQueue> queue_;
    std::shared_ptr<SQLiteFile> file_;
};

}  // namespace vantix
