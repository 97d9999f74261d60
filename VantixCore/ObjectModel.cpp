#include "VantixCore/ObjectModel.h"

#include "Platform/Values/JSON.h"

#include <utility>

namespace vantix {

namespace {

std::optional<ObjectModel::Index> index(const Value& value) {
    const Dictionary* description = value.dictionary();
    const std::string* attribute = description ? description->text("attribute") : nullptr;
    if (!attribute) return {};
    const std::string* word = description->text("containing");
    return ObjectModel::Index{*attribute, word ? std::optional(*word) : std::nullopt};
}

std::optional<ObjectModel::Entity> entity(const Value& value) {
    const Dictionary* description = value.dictionary();
    const std::string* name = description ? description->text("name") : nullptr;
    const List* attributes = description ? description->list("attributes") : nullptr;
    if (!name || !attributes) return {};

    ObjectModel::Entity result{*name, {}, {}};
    for (const Value& attribute : *attributes) {
        if (!attribute.text()) return {};
        result.attributes.push_back(*attribute.text());
    }
    if (const List* indexes = description->list("indexes")) {
        for (const Value& described : *indexes) {
            auto found = index(described);
            if (!found) return {};
            result.indexes.push_back(std::move(*found));
        }
    }
    return result;
}

}  // namespace

std::optional<ObjectModel> ObjectModel::parse(std::string_view text) {
    auto parsed = parseJSON(text);
    const Dictionary* description = parsed ? parsed.value().dictionary() : nullptr;
    const List* entities = description ? description->list("entities") : nullptr;
    if (!entities) return {};

    ObjectModel model;
    for (const Value& value : *entities) {
        auto described = entity(value);
        if (!described) return {};
        model.entities.push_back(std::move(*described));
    }
    return model;
}

}  // namespace vantix
