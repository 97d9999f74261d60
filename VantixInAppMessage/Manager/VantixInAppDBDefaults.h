#pragma once

#include "VantixCore/DBDefaultsGenerator.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

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
};

}  // namespace vantix
