#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixCore/DBDefaultsGenerator.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

#include <memory>

namespace vantix {

/// The fixed configuration of the module's store.
struct VantixInAppDBDefaults : DBDefaultsGenerator<VantixInAppDBDefaults> {
    /// Seconds.
    static constexpr double defaultPersistentStoreTimeOut = 5.0;
    static constexpr const char* defaultStoreName = "InAppMessageModel";
    static constexpr const char* defaultfModelFileName = "InAppMessageModel";
    static constexpr const char* defaultModelFileExtension = ".momd";
    static constexpr const char* defaultEnityName = "InAppMessage";
    static const ResourceBundle& defaultBundle() { return resourceBundle(); }

    /// The module's records in the store of the installation. Opens nothing yet. Any thread.
    static std::shared_ptr<BaseRepository> repository(Env environment);
};

}  // namespace vantix
