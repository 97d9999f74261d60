#pragma once

#include "Platform/DispatchQueue.h"
#include "VantixCore/BaseRepository.h"
#include "VantixCore/SQLiteConnection.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace vantix {

/// One database file that holds what a model describes, and the serial queue on which alone it is touched. May be
/// dropped on any thread: the file is closed on the queue.
class SQLiteStore {
public:
    /// Touches nothing yet. `infersMapping`: attributes that an older file lacks are added to it.
    SQLiteStore(std::filesystem::path file, ObjectModel model, bool infersMapping,
                std::shared_ptr<DispatchQueue> queue);
    ~SQLiteStore();

    /// Whether this store keeps that file in that way.
    bool keeps(const std::filesystem::path& file, const ObjectModel& model, bool infersMapping) const;

    DispatchQueue& queue() const { return *queue_; }

    /// Runs the operation on the opened file; what it throws becomes the error. A file that proves damaged is set aside
    /// and the operation runs once more, on a new one. After an error the next call opens the file anew. On the queue
    /// only.
    std::optional<Error> perform(const std::function<void(SQLiteConnection&)>& operation);

private:
    void performOrReplace(const std::function<void(SQLiteConnection&)>& operation);
    SQLiteConnection& opened();
    void extendToModel(SQLiteConnection& connection) const;
    void setAside(const char* reason);

    std::filesystem::path file_;
    ObjectModel model_;
    bool infersMapping_;
    std::shared_ptr<DispatchQueue> queue_;
    std::shared_ptr<SQLiteConnection> connection_;
};

}  // namespace vantix
