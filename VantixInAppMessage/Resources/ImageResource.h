#pragma once

#include "Platform/Values/Image.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

#include <cstddef>
#include <functional>
#include <string>

namespace vantix {

/// Names a picture in a bundle's asset catalogue.
struct ImageResource {
    std::string name;
    ResourceBundle bundle;

    bool operator==(const ImageResource&) const = default;

    /// The picture; a null image when the bundle lacks it.
    Image image() const;

    /// The glyph of the close control.
    static const ImageResource& cross();
    /// Stands in for a picture that is not there.
    static const ImageResource& defaultImage();
};

}  // namespace vantix

template <>
struct std::hash<vantix::ImageResource> {
    std::size_t operator()(const vantix::ImageResource& resource) const noexcept {
        return vantix::hashResource(resource.name, resource.bundle);
    }
};
