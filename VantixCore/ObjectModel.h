#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// The description of what a store holds: entities with their text attributes, in order.
struct ObjectModel {
    struct Entity {
        std::string name;
        std::vector<std::string> attributes;

        bool operator==(const Entity&) const = default;
    };
    std::vector<Entity> entities;

    /// Reads a JSON text {"entities": [{"name": …, "attributes": [text, …]}, …]}. Absent when the text is none.
    static std::optional<ObjectModel> parse(std::string_view text);

    bool operator==(const ObjectModel&) const = default;
};

}  // namespace vantix
