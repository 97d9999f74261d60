#include "CampaignCheck/Rules/StructureQuestions.h"

#include "CampaignCheck/Rules/Wording.h"
#include "CampaignCheck/Rules/WrittenFields.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"

#include <algorithm>

namespace vantix {

namespace {

/// What the device does without a text that it cannot read, and what it looks for there.
struct LostText {
    std::string_view place;
    std::string_view consequence;
    std::string_view instead;
};

constexpr LostText lostTexts[] = {
    {"", "no device takes it", "one object, { … }, with the keys of a campaign"},
    {"/trigger", "the device drops the message for want of an event",
     "an object such as {\"eventName\": \"INSTANT\"}, or the JSON text of one"},
    {"/body", "the device keeps the message as a badge that is never shown and stands in the way of the next ones",
     "an object such as {\"type\": \"POPUP\", \"title\": …}, or the JSON text of one"},
    {"/template", "the device shows the message without its style",
     "an object such as {\"layoutBackgroundColor\": \"#FFFFFF\"}, or the JSON text of one"},
};

std::vector<std::string_view> keysIn(std::string_view container) {
    std::vector<std::string_view> keys;
    for (const CampaignField* field : fieldsIn(container)) keys.push_back(field->key());
    return keys;
}

std::string_view kindOf(const Value& value) {
    if (value.boolean()) return "true or false";
    if (value.integer() || value.real()) return "a number";
    if (value.text()) return "a text";
    if (value.list()) return "a list";
    if (value.dictionary()) return "an object";
    return "null";
}

bool isAll(const Value& list, bool (*isOfKind)(const Value&)) {
    return list.list() && std::all_of(list.list()->begin(), list.list()->end(), isOfKind);
}

bool isOfKind(const Value& value, const CampaignField& field) {
    switch (field.kind) {
        case FieldKind::text:
        case FieldKind::numberText:
        case FieldKind::color:
            return value.text();
        case FieldKind::object:
            // What stands in a nested text is looked at by itself.
            return value.dictionary() || field.isNested();
        case FieldKind::freeObject:
            return value.dictionary();
        case FieldKind::objects:
            return isAll(value, [](const Value& element) { return element.dictionary() != nullptr; });
        case FieldKind::texts:
            return isAll(value, [](const Value& element) { return element.text() != nullptr; });
    }
    return true;
}

/// The written value in the kind that is read, where that is plain.
std::string asRead(const Value& value, const CampaignField& field) {
    bool isNumber = value.integer() && (field.kind == FieldKind::text || field.kind == FieldKind::numberText);
    if (isNumber) return quoted(std::to_string(*value.integer())) + ", in quotation marks";
    return std::string(inWords(field.kind));
}

std::string whatWrongKindLoses(const Value& value, const CampaignField& field) {
    bool isMixedList = value.list() && (field.kind == FieldKind::objects || field.kind == FieldKind::texts);
    if (isMixedList)
        return "holds something that is no " + std::string(field.kind == FieldKind::texts ? "text" : "object") +
               ", and the device reads nothing of the list";
    return "is " + std::string(kindOf(value)) + ", which the device does not read there: it counts as not written";
}

}  // namespace

Objections unreadableTexts(const CheckedCampaign& checked) {
    Objections found;
    for (const auto& [place, reason] : checked.campaign.unreadable) {
        std::string what = place.empty() ? "the file" : "what stands under " + quoted(place.substr(1));
        const auto& lost = *std::ranges::find(lostTexts, place, &LostText::place);
        found.push_back({place, what + " is no JSON object (" + reason + "): " + std::string(lost.consequence),
                         std::string(lost.instead)});
    }
    return found;
}

Objections unknownKeys(const CheckedCampaign& checked) {
    Objections found;
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (written.field || written.place == schemaPlace || found.size() > mostObjections) return;
        found.push_back({written.place, "nothing reads " + quoted(written.key) + ", the device passes it over",
                         nearestOrAll(written.key, keysIn(written.container))});
    });
    return found;
}

Objections wrongKinds(const CheckedCampaign& checked) {
    Objections found;
    forEachWrittenField(checked.campaign, [&](const WrittenField& written) {
        if (!written.field || written.value.isNull() || isOfKind(written.value, *written.field)) return;
        if (found.size() > mostObjections) return;
        found.push_back({written.place, quoted(written.key) + " " + whatWrongKindLoses(written.value, *written.field),
                         asRead(written.value, *written.field)});
    });
    return found;
}

}  // namespace vantix
