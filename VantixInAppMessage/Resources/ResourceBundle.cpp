#include "VantixInAppMessage/Resources/ResourceBundle.h"

namespace vantix {

/// Made by the build from the files of this folder.
const std::string* embeddedResource(std::string_view fileName);

// What stands below is never destroyed: threads may ask until the very end of the process.

const ResourceBundle& resourceBundle() {
    static const auto& bundle = *new ResourceBundle{"VantixInAppMessage", &embeddedResource};
    return bundle;
}

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

namespace {

std::size_t hashResource(const std::string& name, const vantix::ResourceBundle& bundle) {
    std::hash<std::string> hash;
    return hash(name) * 31 + hash(bundle.name);
}

}  // namespace

std::size_t std::hash<vantix::ImageResource>::operator()(const vantix::ImageResource& resource) const noexcept {
    return hashResource(resource.name, resource.bundle);
}

std::size_t std::hash<vantix::ColorResource>::operator()(const vantix::ColorResource& resource) const noexcept {
    return hashResource(resource.name, resource.bundle);
}
