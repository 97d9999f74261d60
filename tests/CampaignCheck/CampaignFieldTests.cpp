#include "CampaignCheck/Fields/CampaignField.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using CampaignFieldTest = ModuleTest;

namespace {

/// A value that the module can tell from none.
Value valueFor(const CampaignField& field) {
    if (field.key() == "textStyle") return "BOLD";
    if (!field.words.empty()) return std::string(field.words.back());
    switch (field.kind) {
        case FieldKind::text:
            return "x";
        case FieldKind::numberText:
            return "17";
        case FieldKind::color:
            return "#123456";
        case FieldKind::objects:
            return List{Dictionary{}};
        case FieldKind::texts:
            return List{"x"};
        case FieldKind::object:
        case FieldKind::freeObject:
            return Dictionary{{"x", 1}};
    }
    return {};
}

/// What the module decodes when nothing but the value stands at the place.
VantixInAppMessagePayload decoded(std::string place, Value value) {
    for (auto step = place.rfind('/'); step != std::string::npos; step = place.rfind('/')) {
        std::string key = place.substr(step + 1);
        bool isNested = step == 0 && value.dictionary();
        if (isNested) value = toJSON(value);
        value = key == "*" ? Value(List{value}) : Value(Dictionary{{key, value}});
        place.resize(step);
    }
    auto payload = VantixInAppMessagePayload::generate(*value.dictionary());
    for (std::string* text : {&payload.imageIdentifier, &payload.trigger.textRepresentation,
                              &payload.body.textRepresentation, &payload.style.textRepresentation}) {
        text->clear();
    }
    return payload;
}

/// The places of all that a value holds.
void addPlaces(const Value& value, const std::string& place, Texts& places) {
    if (!place.empty()) places.push_back(place);
    for (const auto& [key, member] : value.dictionary() ? *value.dictionary() : Dictionary()) {
        addPlaces(member, place + "/" + key, places);
    }
    for (const Value& element : value.list() ? *value.list() : List()) {
        if (element.dictionary()) addPlaces(element, place + "/*", places);
    }
}

}  // namespace

TEST_F(CampaignFieldTest, EachIsReadByTheModuleAndAsNothingElse) {
    EXPECT_GT(campaignFields().size(), 40U);
    for (const CampaignField& field : campaignFields()) {
        auto without = decoded(std::string(field.container()) + "/unknown", valueFor(field));
        EXPECT_EQ(decoded(std::string(field.place), true), without) << field.place;
        // Those that hold others are read when these are.
        if (field.kind == FieldKind::object) continue;
        EXPECT_NE(decoded(std::string(field.place), valueFor(field)), without) << field.place;
    }
}

TEST_F(CampaignFieldTest, AllThatTheModuleReadsIsThere) {
    VantixInAppMessagePayload all;
    all.campaignId = all.variationId = "x";
    all.body.ctas.emplace_back().actionText = "x";
    all.style.ctas.resize(1);
    for (auto* style : {&all.style.title, &all.style.message, &all.style.ctas[0]}) {
        style->textColor = style->backgroundColor = Color::white();
    }
    all.style.phoneBackgroundColor = all.style.layoutBackgroundColor = Color::white();
    all.style.rating = {Color::white(), Color::white()};

    Texts places;
    addPlaces(all.getJSON(), "", places);
    std::erase_if(places, [](const std::string& place) {
        // The first is the device's own, the second stands for the elements of a list.
        return place == "/imageIdentifier" || place.ends_with("*");
    });
    Texts known;
    for (const CampaignField& field : campaignFields()) known.emplace_back(field.place);
    std::ranges::sort(places);
    std::ranges::sort(known);
    EXPECT_EQ(places, known);
}
