#pragma once

#include "VantixInAppMessage/Resources/ResourceBundle.h"

#include <cstddef>
#include <functional>
#include <string>

namespace vantix {

/// Names a colour in a bundle's asset catalogue.
struct ColorResource {
    std::string name;
    ResourceBundle bundle;

    bool operator==(const ColorResource&) const = default;
};

}  // namespace vantix

template <>
struct std::hash<vantix::ColorResource> {
    std::size_t operator()(const vantix::ColorResource& resource) const noexcept {
        return vantix::hashResource(resource.name, resource.bundle);
    }
};
