#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

#include <optional>

namespace vantix {

/// The fixed configuration of the module's store.
struct VantixInAppDBDefaults {
    /// Seconds.
    static constexpr double defaultPersistentStoreTimeOut = 5.0;
    static constexpr const char* defaultStoreName = "InAppMessageModel";
    static constexpr const char* defaultfModelFileName = "InAppMessageModel";
    static constexpr const char* defaultModelFileExtension = ".momd";
    static constexpr const char* defaultEnityName = "InAppMessage";
    static const ResourceBundle& defaultBundle() { return resourceBundle(); }

    /// The object model, from the model file in the bundle; absent when there is none.
    static std::optional<ObjectModel> defaultMOM();
};

}  // namespace vantix
