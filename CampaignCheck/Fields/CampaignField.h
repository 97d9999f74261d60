#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// What the device reads under a key.
enum class FieldKind {
    text,
    /// A text that holds a whole number.
    numberText,
    /// A text that names a colour.
    color,
    object,
    /// Objects only; one element of another kind loses them all.
    objects,
    /// Texts only; one element of another kind loses them all.
    texts,
    /// An object of the author's own: keys and values are free.
    freeObject,
};

/// One key that the device reads of a campaign.
struct CampaignField {
    /// A JSON pointer in which "*" stands for any element of a list: "/body/ctas/*/type".
    std::string_view place;
    FieldKind kind;
    /// For people: what it is, and what it does.
    std::string_view title;
    std::string_view description;
    /// All that the device knows, where it knows only some.
    std::vector<std::string_view> words = {};
    /// A message without it is not shown.
    bool isNeeded = false;

    std::string_view key() const { return place.substr(place.rfind('/') + 1); }
    std::string_view container() const { return place.substr(0, place.rfind('/')); }
};

/// Every key that the device reads, containers before what they hold.
std::span<const CampaignField> campaignFields();
/// The fields that stand directly in the container ("", "/body", "/body/ctas/*").
std::vector<const CampaignField*> fieldsIn(std::string_view container);

/// The kind in words: "a text", "a list of objects".
std::string_view inWords(FieldKind kind);

}  // namespace vantix
