#pragma once

#include "VantixCore/Store/SQLiteStore.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

namespace vantix {

class Dispatcher;

/// The stores in use in one data directory, so that repositories of one file share its connection. Usable from any
/// thread.
class SQLiteStores {
public:
    SQLiteStores(std::shared_ptr<Dispatcher> dispatcher, std::shared_ptr<Disk> disk, std::filesystem::path directory);

    /// The store of that description, its file below the directory; the same one for as long as somebody holds it.
    std::shared_ptr<SQLiteStore> store(StoreDescription description);

private:
    std::shared_ptr<Dispatcher> dispatcher_;
    std::shared_ptr<Disk> disk_;
    std::filesystem::path directory_;
    std::mutex mutex_;
    std::vector<std::weak_ptr<SQLiteStore>> stores_;
};

}  // namespace vantix
