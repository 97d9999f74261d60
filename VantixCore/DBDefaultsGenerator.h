#pragma once

#include "VantixCore/ObjectModel.h"

#include <optional>
#include <string>

namespace vantix {

/// What a library fixes about its store, all of it static. The library's own type derives from this one, names itself
/// as `Defaults`, and declares:
///
///     double defaultPersistentStoreTimeOut;   seconds that an operation waits for a file that another process holds
///     const char* defaultStoreName;
///     const char* defaultfModelFileName;
///     const char* defaultModelFileExtension;  with its dot
///     const char* defaultEnityName;
///     const ResourceBundle& defaultBundle();  holds the model file
template <typename Defaults>
struct DBDefaultsGenerator {
    /// The object model, from the model file in the bundle; absent when there is none.
    static std::optional<ObjectModel> defaultMOM() {
        std::string fileName = std::string(Defaults::defaultfModelFileName) + Defaults::defaultModelFileExtension;
        const std::string* text = Defaults::defaultBundle().find(fileName);
        return text ? ObjectModel::parse(*text) : std::nullopt;
    }
};

}  // namespace vantix
