#pragma once

#include "VantixCore/BaseRepository.h"

#include <array>
#include <optional>
#include <string>

namespace vantix {

/// The stored record of one message. Every attribute is an optional text.
struct InAppMessage {
    /// The attributes, in the store's order.
    enum class Property {
        cuid,
        scope,
        campaignId,
        variationId,
        senderID,
        senderSource,
        custom,
        priority,
        validity,
        trigger,
        type,
        body,
        imageIdentifier,
        /// "template" in the store, a word that C++ keeps for itself.
        templateText,
    };
    static constexpr int propertyCount = 14;

    /// Indexed by property.
    std::array<std::optional<std::string>, propertyCount> values;

    const std::optional<std::string>& operator[](Property property) const {
        return values[static_cast<std::size_t>(property)];
    }

    bool operator==(const InAppMessage&) const = default;

    /// The attribute's name.
    static std::string name(Property property);
    /// Selects every record.
    static FetchRequest fetchRequest();
    static InAppMessage from(Record record);
};

}  // namespace vantix
