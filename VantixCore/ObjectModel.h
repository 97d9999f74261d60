#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// The description of what a store holds: entities with their text attributes, in order, and what is looked up in them
/// however many records there are.
struct ObjectModel {
    /// Finds records without a look at the others: those whose attribute equals a text or, with `containing`, those
    /// whose attribute contains this one word in any letter case. The word is ASCII, and no character beyond ASCII may
    /// fold to the beginning, the end or a part of it, as the Kelvin sign does to K.
    struct Index {
        std::string attribute;
        std::optional<std::string> containing = {};

        bool operator==(const Index&) const = default;
    };
    struct Entity {
        std::string name;
        std::vector<std::string> attributes;
        std::vector<Index> indexes = {};

        bool operator==(const Entity&) const = default;
    };
    std::vector<Entity> entities;

    /// Reads a JSON text {"entities": [{"name": …, "attributes": [text, …], "indexes": [{"attribute": …, "containing":
    /// …}, …]}, …]}; "indexes" and "containing" may be missing. Absent when the text is none.
    static std::optional<ObjectModel> parse(std::string_view text);

    bool operator==(const ObjectModel&) const = default;
};

}  // namespace vantix
