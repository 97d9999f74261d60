#include "CampaignCheck/Schema/CampaignSchema.h"

#include "CampaignCheck/Fields/CampaignField.h"
#include "CampaignCheck/Schema/ExampleCampaigns.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppBody.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace vantix {

namespace {

// Regular expressions that a text must match.
constexpr const char* anyColor = "^(#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8}))?$";
constexpr const char* readableSize = "^[+]?0*([1-9][0-9]?|100)$";
constexpr const char* webAddress = "^([Hh][Tt][Tt][Pp][Ss]?://[!-~]+)?$";
constexpr const char* secureAddress = "^([Hh][Tt][Tt][Pp][Ss]://[!-~]+)?$";
constexpr const char* addressWithScheme = "^[A-Za-z][A-Za-z0-9+.-]+:";
constexpr const char* objectText = "^\\s*\\{";

std::string textOf(std::string_view text) { return std::string(text); }

List listOf(const std::vector<std::string_view>& words) {
    List list;
    for (std::string_view word : words) list.emplace_back(textOf(word));
    return list;
}

/// Adds the members, which must not be there yet.
void add(Dictionary& schema, const Dictionary& members) {
    for (const auto& [key, value] : members) schema.set(key, value);
}

/// Adds what stands in a campaign at a place of the table of fields.
void addValuesAt(std::string_view place, const Value& value, List& found) {
    if (place.empty()) return found.push_back(value);
    place.remove_prefix(1);
    std::string_view key = place.substr(0, place.find('/'));
    std::string_view rest = place.substr(key.size());
    if (const List* list = key == "*" ? value.list() : nullptr) {
        for (const Value& element : *list) addValuesAt(rest, element, found);
    } else if (const Dictionary* object = value.dictionary()) {
        if (const Value* member = object->find(key)) addValuesAt(rest, *member, found);
    }
}

bool isEmptyText(const Value& value) { return value.text() && value.text()->empty(); }

/// Some of what the example campaigns hold there.
List examplesOf(const CampaignField& field) {
    constexpr std::size_t enough = 3;
    List values;
    for (const Value& campaign : exampleCampaigns()) addValuesAt(field.place, campaign, values);
    List examples = listOf(field.words);
    for (const Value& value : values) {
        bool isNew = std::find(examples.begin(), examples.end(), value) == examples.end();
        if (isNew && !isEmptyText(value) && examples.size() < enough + field.words.size()) examples.push_back(value);
    }
    return examples;
}

Dictionary reference(const std::string& key) { return {{"$ref", "#/$defs/" + key}}; }

Dictionary objectSchema(const std::string& container, Dictionary properties = {});

/// An object, or its JSON text.
Dictionary nestedContent(const CampaignField& field) {
    Dictionary object = reference(textOf(field.key()));
    return {{"anyOf", List{object, Dictionary{{"type", "string"},
                                              {"pattern", objectText},
                                              {"contentMediaType", "application/json"},
                                              {"contentSchema", object}}}}};
}

Dictionary textContent(const CampaignField& field) {
    Dictionary content{{"type", "string"}};
    if (field.isEnumeration())
        content.set("enum", listOf(field.words));
    else if (field.isNeeded)
        content.set("minLength", 1);
    if (field.kind == FieldKind::color) content.set("pattern", anyColor);
    if (field.kind == FieldKind::numberText) content.set("pattern", readableSize);
    if (field.place == "/body/image") content.set("pattern", webAddress);
    return content;
}

Dictionary contentOf(const CampaignField& field) {
    switch (field.kind) {
        case FieldKind::text:
        case FieldKind::numberText:
        case FieldKind::color:
            return textContent(field);
        case FieldKind::object:
            return field.isNested() ? nestedContent(field) : objectSchema(field.place);
        case FieldKind::objects:
            return {{"type", "array"}, {"items", objectSchema(field.place + "/*")}};
        case FieldKind::texts:
            return {{"type", "array"}, {"items", Dictionary{{"type", "string"}}}, {"uniqueItems", true}};
        case FieldKind::freeObject:
            return {{"type", "object"}};
    }
    return {};
}

Dictionary fieldSchema(const CampaignField& field) {
    Dictionary schema{{"title", field.title}, {"description", field.description}};
    add(schema, contentOf(field));
    // Enumerations need none, and nested objects stand in the examples of the whole.
    List examples = field.isEnumeration() || field.isNested() ? List() : examplesOf(field);
    if (!examples.empty()) schema.set("examples", std::move(examples));
    return schema;
}

/// An object with such properties, some of which it needs; others may stand beside them.
Dictionary having(Dictionary properties, List needed) {
    return {{"type", "object"}, {"properties", std::move(properties)}, {"required", std::move(needed)}};
}

Dictionary whereTypeIs(List words, Dictionary then) {
    Dictionary anyOfThem{{"enum", std::move(words)}};
    return {{"if", having({{"type", anyOfThem}}, {"type"})}, {"then", std::move(then)}};
}

Dictionary matching(const char* pattern) { return {{"type", "string"}, {"pattern", pattern}}; }

/// A call to action bears the name of the type whose answer it takes.
bool asksForAnswer(VantixInAppNotificationType type) { return ctaActionType(rawValue(type)).has_value(); }

Dictionary withButtonOfType(const std::string& word) {
    Dictionary button = having({{"type", Dictionary{{"const", word}}}}, {"type"});
    return having({{"ctas", Dictionary{{"type", "array"}, {"contains", button}}}}, {"ctas"});
}

bool isBanner(VantixInAppNotificationType type) {
    InAppBody body;
    body.type = type;
    return body.isBanner();
}

Dictionary withMessageAndSecureImage() {
    Dictionary anyText{{"type", "string"}, {"minLength", 1}};
    return having({{"message", anyText}, {"image", matching(secureAddress)}}, {"message"});
}

Dictionary withOptions() {
    Dictionary some{{"type", "array"}, {"minItems", 1}};
    return having({{"feedbackOptions", having({{"options", some}}, {"options"})}}, {"feedbackOptions"});
}

List bodyConditions() {
    List conditions;
    for (VantixInAppNotificationType type : supportedInAppMessageTypes) {
        std::string word = textOf(rawValue(type));
        if (isBanner(type)) conditions.emplace_back(whereTypeIs({word}, withMessageAndSecureImage()));
        if (asksForAnswer(type)) conditions.emplace_back(whereTypeIs({word}, withButtonOfType(word)));
    }
    List feedback = listOf({rawValue(VantixInAppNotificationType::feedback)});
    conditions.emplace_back(whereTypeIs(feedback, withOptions()));
    return conditions;
}

List buttonConditions() {
    List leading = listOf({rawValue(CTAActionType::external), rawValue(CTAActionType::deepLink)});
    return {whereTypeIs(leading, having({{"action", matching(addressWithScheme)}}, {"action"}))};
}

/// What the type of an object asks of its other members.
List conditionsOf(std::string_view container) {
    if (container == "/body") return bodyConditions();
    if (container == "/body/ctas/*") return buttonConditions();
    return {};
}

/// An object with the fields of a container.
Dictionary objectSchema(const std::string& container, Dictionary properties) {
    List needed;
    for (const CampaignField* field : fieldsIn(container)) {
        properties.set(textOf(field->key()), fieldSchema(*field));
        if (field->isNeeded) needed.emplace_back(textOf(field->key()));
    }
    Dictionary schema{{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
    if (!needed.empty()) schema.set("required", std::move(needed));
    if (List conditions = conditionsOf(container); !conditions.empty()) schema.set("allOf", std::move(conditions));
    return schema;
}

Dictionary nestedObjects() {
    Dictionary definitions;
    for (const CampaignField* field : fieldsIn("")) {
        if (field->isNested()) definitions.set(textOf(field->key()), objectSchema(field->place));
    }
    return definitions;
}

}  // namespace

Dictionary campaignSchema() {
    Dictionary schemaKey{{"title", "Schema"},
                         {"description", "Where this schema is, for editors. The device passes it over."},
                         {"type", "string"}};
    Dictionary schema{
        {"$schema", "https://json-schema.org/draft/2020-12/schema"},
        {"title", "Campaign"},
        {"description",
         "An in-app message, as it is sent by a silent push. All values are texts; what stands under "
         "\"trigger\", \"body\" and \"template\" travels as JSON text, and may be written as an object."}};
    add(schema, objectSchema("", {{textOf(schemaPlace.substr(1)), schemaKey}}));
    schema.set("examples", exampleCampaigns());
    schema.set("$defs", nestedObjects());
    return schema;
}

}  // namespace vantix
