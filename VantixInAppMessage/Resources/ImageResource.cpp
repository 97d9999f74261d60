#include "VantixInAppMessage/Resources/ImageResource.h"

namespace vantix {

// Never destroyed, like the bundle.

const ImageResource& ImageResource::cross() {
    static const auto& resource = *new ImageResource{"cross", resourceBundle()};
    return resource;
}

const ImageResource& ImageResource::defaultImage() {
    static const auto& resource = *new ImageResource{"defaultImage", resourceBundle()};
    return resource;
}

Image ImageResource::image() const {
    const std::string* drawing = bundle.find(name + ".svg");
    return drawing ? vectorImage(*drawing) : Image();
}

}  // namespace vantix
