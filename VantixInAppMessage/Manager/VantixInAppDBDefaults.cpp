#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

#include "VantixCore/DBDefaults.h"

namespace vantix {

std::optional<ObjectModel> VantixInAppDBDefaults::defaultMOM() {
    auto file = defaultBundle().find(std::string(defaultfModelFileName) + defaultModelFileExtension);
    return file ? objectModel(*file) : std::nullopt;
}

}  // namespace vantix
