#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using StyleTest = ModuleTest;
using Component = InAppMessageComponentStyle;

namespace {

const Color red{1, 0, 0, 1};

Component styled(double size, TextFontStyle style = TextFontStyle::regular, std::optional<std::string> font = {}) {
    return {{}, size, std::move(font), style, {}};
}

Component component(const std::string& json) { return Component::generate(*parseJSON(json).value().dictionary()); }

}  // namespace

TEST_F(StyleTest, ComponentsReadTextsAndLeaveTheRest) {
    fonts->names = {"Lobster", "BOLD"};
    struct Case {
        std::string json;
        Component expected;
    };
    const std::vector<Case> cases = {
        {R"({})", {}},
        {R"({"textColor":"#FF0000","backgroundColor":"#f00"})", {red, 16, {}, TextFontStyle::regular, red}},
        {R"({"textColor":"red","backgroundColor":16711680})", {}},
        {R"({"textSize":"20"})", styled(20)},
        {R"({"textSize":"+20"})", styled(20)},
        {R"({"textSize":"020"})", styled(20)},
        {R"({"textSize":20})", {}},
        {R"({"textSize":"14.5"})", {}},
        {R"({"textSize":" 20"})", {}},
        {R"({"textSize":"20pt"})", {}},
        {R"({"textSize":""})", {}},
        {R"({"textSize":"+-20"})", {}},
        {R"({"textSize":"0x20"})", {}},
        {R"({"textSize":"99999999999999999999"})", {}},
        {R"({"textStyle":"ITALIC"})", styled(16, TextFontStyle::italic)},
        {R"({"textStyle":"italic"})", {}},
        {R"({"textStyle":""})", {}},
        {R"({"textStyle":1})", {}},
        {R"({"textStyle":"Lobster","textSize":"9"})", styled(9, TextFontStyle::regular, "Lobster")},
        {R"({"textStyle":"lobster"})", {}},
        {R"({"textStyle":"Lobster "})", {}},
        {R"({"textFont":"Lobster"})", {}},
        {R"({"textStyle":"BOLD"})", styled(16, TextFontStyle::bold, "BOLD")},
    };
    for (const Case& test : cases) EXPECT_EQ(component(test.json), test.expected) << test.json;
    EXPECT_TRUE(recorder.takeErrors().empty()) << "silently";
}

TEST_F(StyleTest, TheFontComesByNameOrElseByStyle) {
    fonts->names = {"Lobster"};
    struct Case {
        Component style;
        Font expected;
    };
    const std::vector<Case> cases = {
        {{}, Font::system(16)},
        {styled(20, TextFontStyle::bold), Font::system(20, FontWeight::bold)},
        {styled(16, TextFontStyle::italic), Font::italicSystem(16)},
        {styled(9, TextFontStyle::bold, "Lobster"), Font::named("Lobster", 9)},
        {styled(9, TextFontStyle::bold, "Gone"), Font::system(9)},
        {styled(16, TextFontStyle::italic, ""), Font::italicSystem(16)},
    };
    for (const Case& test : cases) EXPECT_EQ(test.style.getFont(), test.expected);
}

TEST_F(StyleTest, ColoursAreWrittenRoundedAndWithoutAlpha) {
    EXPECT_EQ(hexString({1, 0.5, 0, 1}), "#FF8000");
    EXPECT_EQ(hexString({0.0019, 0.002, 0.999, 0}), "#0001FF");
    EXPECT_EQ(hexString({171 / 255.0, 205 / 255.0, 239 / 255.0, 0.5}), "#ABCDEF");
}

TEST_F(StyleTest, AWholeStyleIsReadAndWritten) {
    fonts->names = {"Lobster"};
    const std::string text = R"({"title":{"textSize":"20","textStyle":"BOLD","textColor":"#ff0000"},"message":{},)"
                             R"("ctas":[{"textSize":"1"},{"textStyle":"Lobster"},{"backgroundColor":"#00ff00"}],)"
                             R"("rating":{"selectedColor":"#0000ff","unselectedColor":"grey"},)"
                             R"("phoneBackgroundColor":"#80FF0000","layoutBackgroundColor":""})";
    auto style = InAppMessageStyle::generate(text);
    EXPECT_EQ(style.textRepresentation, text);
    EXPECT_EQ(style.title.getFont(), Font::system(20, FontWeight::bold));
    ASSERT_EQ(style.ctas.size(), 3U);
    EXPECT_EQ(style.phoneBackgroundColor, (Color{1, 0, 0, 128 / 255.0}));
    EXPECT_EQ(toJSON(style.getJSON()),
              R"({"title":{"textColor":"#FF0000","textSize":20.0,"textStyle":"BOLD"},)"
              R"("message":{"textSize":16.0,"textStyle":"REGULAR"},)"
              R"("ctas":[{"textSize":1.0,"textStyle":"REGULAR"},{"textSize":16.0,"textStyle":"Lobster"},)"
              R"({"backgroundColor":"#00FF00","textSize":16.0,"textStyle":"REGULAR"}],)"
              R"("phoneBackgroundColor":"#FF0000","rating":{"selectedColor":"#0000FF"}})");
    EXPECT_TRUE(recorder.takeErrors().empty());
}

TEST_F(StyleTest, NestedValuesOfAWrongKindAreLeftOutSilently) {
    for (const char* text : {R"({"title":"x","message":[],"ctas":{},"rating":1})", R"({"ctas":[{"textSize":"9"},1]})",
                             R"({"phoneBackgroundColor":{},"layoutBackgroundColor":"blue"})", R"({"ctas":[]})"}) {
        InAppMessageStyle expected;
        expected.textRepresentation = text;
        EXPECT_EQ(InAppMessageStyle::generate(text), expected) << text;
    }
    EXPECT_TRUE(recorder.takeErrors().empty());
}
