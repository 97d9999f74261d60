#pragma once

#include <cstddef>
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

/// The hash of what bears this name in this bundle.
std::size_t hashResource(const std::string& name, const ResourceBundle& bundle);

/// The bundle of this module.
const ResourceBundle& resourceBundle();

}  // namespace vantix
