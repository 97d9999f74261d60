#include "VantixCore/Store/SQLiteStores.h"

#include "Platform/Ports/Dispatcher.h"
#include "VantixCore/VantixDomainFactory.h"

#include <utility>

namespace vantix {

SQLiteStores::SQLiteStores(std::shared_ptr<Dispatcher> dispatcher, std::shared_ptr<Disk> disk,
                           std::filesystem::path directory)
    : dispatcher_(std::move(dispatcher)), disk_(std::move(disk)), directory_(std::move(directory)) {}

std::shared_ptr<SQLiteStore> SQLiteStores::store(StoreDescription description) {
    description.file = directory_ / description.file;
    std::lock_guard lock(mutex_);
    std::erase_if(stores_, [](const auto& store) { return store.expired(); });
    for (const auto& store : stores_) {
        auto known = store.lock();
        if (known && known->description() == description) return known;
    }
    auto queue = dispatcher_->makeSerialQueue(VantixDomainFactory::getDomain("store"), QualityOfService::utility);
    auto made = std::make_shared<SQLiteStore>(disk_, std::move(description), std::move(queue));
    stores_.push_back(made);
    return made;
}

}  // namespace vantix
