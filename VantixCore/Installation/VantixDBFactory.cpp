#include "VantixCore/VantixDBFactory.h"

#include "Platform/Values/FatalError.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Store/SQLiteRepository.h"
#include "VantixCore/Store/SQLiteStores.h"

#include <algorithm>
#include <utility>

namespace vantix {

namespace {

const ObjectModel::Entity& entityNamed(const std::string& name, const ObjectModel& model) {
    auto entity = std::find_if(model.entities.begin(), model.entities.end(),
                               [&](const auto& candidate) { return candidate.name == name; });
    if (entity == model.entities.end()) fatalError("The object model has no entity " + name);
    return *entity;
}

}  // namespace

std::shared_ptr<BaseRepository> VantixDBFactory::getRepositoryFor(const std::string& entity, const std::string& inStore,
                                                                  const ObjectModel& withModel, Env,
                                                                  bool shouldInferMappingModelAutomatically,
                                                                  std::optional<std::string> sharedAppGroupIdentifier,
                                                                  double persistentStoreTimeOut) {
    std::filesystem::path file = inStore + ".sqlite";
    if (sharedAppGroupIdentifier) file = *sharedAppGroupIdentifier / file;
    StoreDescription description{std::move(file), withModel, shouldInferMappingModelAutomatically,
                                 seconds(persistentStoreTimeOut)};
    auto store = Installation::current()->stores()->store(description);
    return std::make_shared<SQLiteRepository>(entityNamed(entity, withModel), std::move(store));
}

}  // namespace vantix
