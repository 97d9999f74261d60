#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Image.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// A set of files that is linked into the program.
struct ResourceBundle {
    std::string name;
    /// The content of a file; null for an unknown name.
    const std::string* (*find)(std::string_view fileName) = nullptr;

    bool operator==(const ResourceBundle&) const = default;
};

/// The bundle of this module.
const ResourceBundle& resourceBundle();

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

/// Names a colour in a bundle's asset catalogue.
struct ColorResource {
    std::string name;
    ResourceBundle bundle;

    bool operator==(const ColorResource&) const = default;
};

}  // namespace vantix

template <>
struct std::hash<vantix::ImageResource> {
    std::size_t operator()(const vantix::ImageResource& resource) const noexcept;
};

template <>
struct std::hash<vantix::ColorResource> {
    std::size_t operator()(const vantix::ColorResource& resource) const noexcept;
};
