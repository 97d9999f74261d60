#include "VantixInAppMessage/Resources/ResourceBundle.h"

#include <functional>

namespace vantix {

/// Made by the build from the files of this folder.
const std::string* embeddedResource(std::string_view fileName);

std::size_t hashResource(const std::string& name, const ResourceBundle& bundle) {
    std::hash<std::string> hash;
    return hash(name) * 31 + hash(bundle.name);
}

/// Never destroyed: threads may ask until the very end of the process.
const ResourceBundle& resourceBundle() {
    static const auto& bundle = *new ResourceBundle{"VantixInAppMessage", &embeddedResource};
    return bundle;
}

}  // namespace vantix
