#include "Platform/Dispatcher.h"
#include "Platform/FatalError.h"
#include "Platform/Platform.h"
#include "VantixCore/BaseRepository.h"
#include "VantixCore/SQLiteRepository.h"
#include "VantixCore/SQLiteStore.h"
#include "VantixCore/Vantix.h"
#include "VantixCore/VantixCore.h"

#include <algorithm>
#include <mutex>

namespace vantix {

namespace {

/// The stores in use, so that repositories of one file share its connection.
class StoreRegistry {
public:
    std::shared_ptr<SQLiteStore> store(const std::filesystem::path& file, const ObjectModel& model, bool infersMapping,
                                       const std::shared_ptr<Dispatcher>& dispatcher) {
        std::lock_guard lock(mutex_);
        std::erase_if(entries_, [](const Entry& entry) { return entry.store.expired(); });
        for (const Entry& entry : entries_) {
            auto known = entry.store.lock();
            if (known && known->keeps(file, model, infersMapping) && entry.dispatcher.lock() == dispatcher)
                return known;
        }
        auto queue = dispatcher->makeSerialQueue(VantixDomainFactory::getDomain("store"), QualityOfService::utility);
        auto made = std::make_shared<SQLiteStore>(file, model, infersMapping, std::move(queue));
        entries_.push_back({dispatcher, made});
        return made;
    }

private:
    struct Entry {
        std::weak_ptr<Dispatcher> dispatcher;
        std::weak_ptr<SQLiteStore> store;
    };

    std::mutex mutex_;
    std::vector<Entry> entries_;
};

const ObjectModel::Entity& entityNamed(const std::string& name, const ObjectModel& model) {
    auto entity = std::find_if(model.entities.begin(), model.entities.end(),
                               [&](const auto& candidate) { return candidate.name == name; });
    if (entity == model.entities.end()) fatalError("The object model has no entity " + name);
    return *entity;
}

std::filesystem::path fileOf(const std::string& store, const std::optional<std::string>& appGroup) {
    auto folder = Vantix::host().dataDirectory;
    if (appGroup) folder /= *appGroup;
    return folder / (store + ".sqlite");
}

}  // namespace

std::shared_ptr<BaseRepository> VantixDBFactory::getRepositoryFor(const std::string& entity, const std::string& inStore,
                                                                  const ObjectModel& withModel, Env,
                                                                  bool shouldInferMappingModelAutomatically,
                                                                  std::optional<std::string> sharedAppGroupIdentifier) {
    static StoreRegistry registry;
    auto store = registry.store(fileOf(inStore, sharedAppGroupIdentifier), withModel,
                                shouldInferMappingModelAutomatically, Platform::current().dispatcher);
    return std::make_shared<SQLiteRepository>(entityNamed(entity, withModel), std::move(store));
}

}  // namespace vantix
