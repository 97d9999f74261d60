#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/DispatchQueue.h"
#include "VantixCore/ObjectModel.h"
#include "VantixCore/Store/SQLiteFile.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace vantix {

/// What is kept where, and how.
struct StoreDescription {
    std::filesystem::path file;
    ObjectModel model;
    /// Whether attributes that an older file lacks are added to it.
    bool infersMapping = true;
    /// How long an operation waits for a file that another process holds.
    Duration busyTimeOut{0};

    bool operator==(const StoreDescription&) const = default;
};

/// One database file that holds what a model describes, and the serial queue on which alone it is touched. May be
/// dropped on any thread: the file is closed on the queue.
class SQLiteStore {
public:
    /// Touches nothing yet.
    SQLiteStore(std::shared_ptr<Disk> disk, StoreDescription description, std::shared_ptr<DispatchQueue> queue);
    ~SQLiteStore();

    const StoreDescription& description() const { return description_; }
    DispatchQueue& queue() const { return *queue_; }

    /// See SQLiteFile::perform. On the queue only.
    std::optional<Error> perform(const SQLiteFile::Operation& operation);

private:
    StoreDescription description_;
    std::shared_ptr<DispatchQueue> queue_;
    std::shared_ptr<SQLiteFile> file_;
};

}  // namespace vantix
