#pragma once

#include "CampaignCheck/Fields/CampaignField.h"
#include "CampaignCheck/Rules/Campaign.h"
#include "DeclarativeUI/AccessibleElement.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// A member of a campaign, as its author wrote it.
struct WrittenField {
    /// A JSON pointer.
    std::string place;
    std::string_view key;
    const Value& value;
    /// The field's container in the table of fields: "/body/ctas/*".
    const std::string& container;
    /// Null for a key that nothing reads.
    const CampaignField* field;
};

/// Calls `visit` for each member of the campaign and of what it holds, containers first. What stands under an unknown
/// key, or in an object of the author's own, is passed over.
void forEachWrittenField(const Campaign& campaign, const std::function<void(const WrittenField&)>& visit);

/// A text that people read, with its place.
struct ShownText {
    std::string place;
    /// The element that shows it, if one does.
    ElementIdentity element;
    /// Of the message that was asked.
    std::string_view text;

    /// "title", "message", "button", "option".
    std::string what() const { return roleName(element.role); }
};

/// Title, message, texts of buttons and options, those that are not empty, in this order. Of very many the first, as
/// a device draws them.
std::vector<ShownText> shownTexts(const VantixInAppMessagePayload& message);

/// A place in a list: "/body/ctas/2/type".
std::string placeOf(std::string_view list, std::size_t index, std::string_view key = {});
/// The index in such a place.
std::size_t indexIn(std::string_view place);

}  // namespace vantix
