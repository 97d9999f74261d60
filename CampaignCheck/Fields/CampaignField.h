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
    std::string place;
    FieldKind kind;
    /// For people: what it is, and what the device does with it.
    std::string title;
    std::string description;
    /// Texts that mean something of their own to the device.
    std::vector<std::string_view> words = {};
    /// Whether the device knows what to do with other texts, too.
    bool takesOtherWords = false;
    /// Whether the device can do nothing with what holds it when it is missing or empty.
    bool isNeeded = false;

    std::string_view key() const { return std::string_view(place).substr(place.rfind('/') + 1); }
    std::string_view container() const { return std::string_view(place).substr(0, place.rfind('/')); }
    /// Whether its words are all that the device knows.
    bool isEnumeration() const { return !words.empty() && !takesOtherWords; }
    /// Whether it may also be the JSON text of its object; on its way to the device it is one.
    bool isNested() const { return kind == FieldKind::object && container().empty(); }
};

/// Where the file of a campaign may name its schema, for editors. The device passes it over.
inline constexpr std::string_view schemaPlace = "/$schema";

/// Every key that the device reads, containers before what they hold.
std::span<const CampaignField> campaignFields();
/// The fields that stand directly in the container ("", "/body", "/body/ctas/*").
std::vector<const CampaignField*> fieldsIn(std::string_view container);

/// The kind in words: "a text", "a list of objects".
std::string_view inWords(FieldKind kind);

}  // namespace vantix
