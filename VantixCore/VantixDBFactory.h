#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixCore/ObjectModel.h"
#include "VantixCore/VantixEvents.h"

#include <memory>
#include <optional>
#include <string>

namespace vantix {

class VantixDBFactory {
public:
    /// Opens nothing yet: the store "DATA DIRECTORY/NAME.sqlite" is opened, made or extended to the model on the store
    /// thread at the first operation; later callers with the same name, model, mapping
    /// and time-out share it; others open the file for themselves. A file that is no database is set aside
    /// under another name ("NAME.sqlite.damaged-1"), logged at error level, and replaced. With
    /// `shouldInferMappingModelAutomatically` attributes that the file lacks are added. With an app group identifier
    /// the file lies in a folder of that name below the data directory. An operation that cannot have the file within
    /// `persistentStoreTimeOut` seconds fails. An entity that the model lacks is a programming error and stops the
    /// process.
    static std::shared_ptr<BaseRepository> getRepositoryFor(const std::string& entity, const std::string& inStore,
                                                            const ObjectModel& withModel, Env configuredForEnv,
                                                            bool shouldInferMappingModelAutomatically,
                                                            std::optional<std::string> sharedAppGroupIdentifier,
                                                            double persistentStoreTimeOut);
};

}  // namespace vantix
