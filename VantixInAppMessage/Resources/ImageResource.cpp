#include "VantixInAppMessage/Resources/ImageResource.h"

namespace vantix {

const ImageResource& ImageResource::cross() {
    static const ImageResource resource{"cross", resourceBundle()};
    return resource;
}

const ImageResource& ImageResource::defaultImage() {
    static const ImageResource resource{"defaultImage", resourceBundle()};
    return resource;
}

Image ImageResource::image() const {
    const std::string* drawing = bundle.find(name + ".svg");
    return drawing ? vectorImage(*drawing) : Image();
}

}  // namespace vantix
