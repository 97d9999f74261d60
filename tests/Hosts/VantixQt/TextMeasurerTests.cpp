#include "VantixQt/Drawing/QtFontCatalogue.h"
#include "VantixQt/Drawing/QtTextMeasurer.h"
#include "tests/Support/FixedTextMeasurer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <type_traits>

namespace vantix {
namespace {

using Lines = std::vector<std::string>;

constexpr double unbounded = std::numeric_limits<double>::infinity();

const Lines textsOfManyScripts = {
    "Welcome back! 50 % off everything until Sunday night, don't miss it.",
    "مرحبا بك في متجرنا! خصم 50% على كل شيء حتى يوم الأحد، لا تفوت الفرصة Inter 12.",
    "שלום עולם, זהו טקסט בעברית עם English באמצע ומספר 123.",
    "欢迎回来！周日之前全场五折，不要错过这个机会，快来看看吧。",
    "ยินดีต้อนรับกลับสู่ร้านของเรา आपका स्वागत है। হ্যালো வணக்கம் 다시 오신 것을 Բարի კეთილი",
    "Emoji 🎉🎉🎉 ❤ mixed 中文 with עברית, and e\u0301\u0302 stacked marks",
    "a\tb\tc\u00A0d",
    "",
};

std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

/// The lines without the joiners that stand where a word is broken.
std::string joined(const TextLayout& layout) {
    std::string text;
    for (const TextLine& line : layout.lines) text += line.text;
    const std::string joiner = "\u200D";
    for (auto at = text.find(joiner); at != std::string::npos; at = text.find(joiner)) text.erase(at, joiner.size());
    return text;
}

/// What every measurer owes.
template <typename Measurer>
class TextMeasurerContract : public testing::Test {
protected:
    TextLayout layOut(std::string_view text, double width = unbounded, double size = 16) const {
        return measurer.layOut(text, Font::system(size), width);
    }
    double width(std::string_view text) const { return layOut(text).size.width; }
    Lines lines(std::string_view text, double width = unbounded) const {
        Lines result;
        for (const TextLine& line : layOut(text, width).lines) result.push_back(line.text);
        return result;
    }

    Measurer measurer = [] {
        if constexpr (std::is_default_constructible_v<Measurer>) {
            return Measurer();
        } else {
            return Measurer(std::make_shared<QtFontCatalogue>());
        }
    }();
};

using Measurers = testing::Types<FixedTextMeasurer, QtTextMeasurer>;
TYPED_TEST_SUITE(TextMeasurerContract, Measurers);

TYPED_TEST(TextMeasurerContract, BreaksEveryScriptWithinTheWidthAndLosesNothing) {
    for (const std::string& text : textsOfManyScripts) {
        for (double maximumWidth : {40.0, 123.4, 350.0, unbounded}) {
            TextLayout layout = this->layOut(text, maximumWidth);
            double widest = 0;
            for (const TextLine& line : layout.lines) {
                EXPECT_LE(line.width, maximumWidth) << text;
                EXPECT_NEAR(line.width, this->width(line.text), 0.5) << line.text;
                widest = std::max(widest, line.width);
            }
            EXPECT_EQ(withoutBlanks(joined(layout)), withoutBlanks(text));
            EXPECT_EQ(layout.size.width, widest);
            EXPECT_DOUBLE_EQ(layout.size.height, layout.lineHeight * static_cast<double>(layout.lines.size()));
            EXPECT_LT(layout.ascent, layout.lineHeight);
        }
    }
}

TYPED_TEST(TextMeasurerContract, FitsIntoTheWidthThatItMeasuredAtEverySize) {
    for (const std::string& text : textsOfManyScripts) {
        for (double size : {7.3, 11.0, 17.6, 40.0}) {
            double measured = this->layOut(text, unbounded, size).size.width;
            EXPECT_EQ(this->layOut(text, measured, size).lines.size(), 1U) << text << " at " << size;
        }
        TextLayout small = this->layOut(text, 120, 13.37);
        TextLayout large = this->layOut(text, 360, 3 * 13.37);
        EXPECT_EQ(small.lines.size(), large.lines.size()) << text;
        EXPECT_NEAR(3 * small.size.width, large.size.width, 1e-9);
        EXPECT_NEAR(3 * small.lineHeight, large.lineHeight, 1e-9);
    }
}

TYPED_TEST(TextMeasurerContract, BreaksBetweenWordsAndAtNewlines) {
    const struct {
        std::string text;
        double width;
        Lines lines;
    } cases[] = {
        {"hello world", this->width("hello w"), {"hello", "world"}},
        {"hello   world", this->width("world"), {"hello", "world"}},
        {"WWWW", this->width("WWW"), {"WWW", "W"}},
        {"", unbounded, {""}},
        {"a\nb", unbounded, {"a", "b"}},
        {"a \n\n b\n", unbounded, {"a", "", " b", ""}},
        {std::string("a\0b", 3), unbounded, {std::string("a\0b", 3)}},
        {"a\xFFz\xC3", unbounded, {"a\uFFFDz\uFFFD"}},
    };
    for (const auto& [text, width, lines] : cases) EXPECT_EQ(this->lines(text, width), lines) << text;
}

TYPED_TEST(TextMeasurerContract, TellsTheDirectionOfTheFirstStrongCharacter) {
    for (const char* text : {"مرحبا", "שלום hello", "123 עברית", "\n«שלום»"}) {
        EXPECT_TRUE(this->layOut(text).rightToLeft) << text;
    }
    for (const char* text : {"", "hello שלום", "123", "中文 עברית", "\xff 12 !"}) {
        EXPECT_FALSE(this->layOut(text).rightToLeft) << text;
    }
}

using QtTextMeasurerTest = TextMeasurerContract<QtTextMeasurer>;

TEST_F(QtTextMeasurerTest, BreaksWhereTheScriptAllows) {
    const struct {
        const char* text;
        double width;
        Lines lines;
    } cases[] = {
        {"hello\u00A0you all", width("hello\u00A0you"), {"hello\u00A0you", "all"}},
        {"欢迎回来周日之前", width("欢迎回"), {"欢迎回", "来周日", "之前"}},
        {"欢迎回来。", width("欢迎回来"), {"欢迎回", "来。"}},
        {"مرحبا بك", width("مرحبا"), {"مرحبا", "بك"}},
        {"ยินดีต้อนรับ", width("ยินดีต้อน"), {"ยินดี", "ต้อนรับ"}},
        {"「東京」へ", width("「東京"), {"「東", "京」へ"}},
        {"👋🏽🇩🇪👩🏽‍🚀1️⃣", 0, {"👋🏽", "🇩🇪", "👩🏽‍🚀", "1️⃣"}},
        {"👋🏽ไทย🎉", 0, {"👋🏽", "ไ", "ท", "ย", "🎉"}},
        {"ببب", width("ببب") * 0.7, {"بب\u200D", "\u200Dب"}},
        {"ae\u0301🎉", 0, {"a", "e\u0301", "🎉"}},
        {"a\r\nb\rc\u2028d", unbounded, {"a", "b", "c", "d"}},
    };
    for (const auto& [text, width, lines] : cases) EXPECT_EQ(this->lines(text, width), lines) << text;
}

TEST_F(QtTextMeasurerTest, GivesAllLinesTheHeightOfTheHighestFont) {
    double latin = layOut("Hello").lineHeight;
    EXPECT_GT(layOut("中文").lineHeight, latin);
    EXPECT_DOUBLE_EQ(layOut("Hello\n中文").lineHeight, layOut("中文").lineHeight);
    EXPECT_DOUBLE_EQ(layOut("").lineHeight, latin) << "an empty line is as high as any other";
}

TEST_F(QtTextMeasurerTest, TellsFontsApart) {
    auto measured = [this](const Font& font) { return measurer.layOut("Hamburgefons", font, unbounded).size.width; };
    double regular = measured(Font::system(16));
    double bold = measured(Font::system(16, FontWeight::bold));
    EXPECT_GT(bold, regular);
    EXPECT_NE(measured(Font::italicSystem(16)), regular);
    EXPECT_EQ(measured(Font::named("no such font", 16)), regular);
    EXPECT_EQ(measured(Font::named("Inter-Bold", 16)), bold);
    EXPECT_LT(measured(Font::named("DejaVuSansCondensed-Bold", 16)), measured(Font::named("DejaVuSans-Bold", 16)));
    EXPECT_EQ(measured(Font::system(-5)), measured(Font::system(1)));
}

TEST_F(QtTextMeasurerTest, FindsTheCharactersOfAllScriptsInEveryDesign) {
    std::string all =
        "👋🏽🇩🇪🏴󠁧󠁢󠁥󠁮󠁧󠁿👨‍👩‍👧‍👦 ქართ かな ✓\u00AD\u200B\n";
    for (const std::string& text : textsOfManyScripts) all += text;
    for (Font font : {Font::system(16), Font::italicSystem(16), Font::system(16, FontWeight::bold),
                      Font::named("DejaVu Sans Mono", 16), Font::named("no such font", 16)}) {
        EXPECT_EQ(measurer.missingCharacters(all, font), Lines{});
        EXPECT_EQ(measurer.missingCharacters("\U000F1234a\U0010FFFD\u0301\U000F1234", font),
                  (Lines{"\U000F1234", "\U0010FFFD\u0301"}));
    }
    for (const char* text : {"مرحبا", "ยินดี", "नमस्ते"}) {
        Font bold = Font::system(16, FontWeight::bold);
        EXPECT_GT(measurer.layOut(text, bold, unbounded).size.width, width(text)) << text;
    }
}

TEST_F(QtTextMeasurerTest, KeepsEveryCharacterOfAVeryLongText) {
    for (std::string unit : {"hello; ", "🎉", "欢迎回来", "W", "e\u0301"}) {
        std::string text = "x ";
        while (text.size() < 100'000) text += unit;
        for (double maximumWidth : {300.0, unbounded}) {
            TextLayout layout = layOut(text, maximumWidth);
            EXPECT_EQ(withoutBlanks(joined(layout)), withoutBlanks(text)) << unit;
            EXPECT_LE(layout.size.width, maximumWidth) << unit;
            if (unit != "hello; " || maximumWidth == unbounded) continue;
            for (const TextLine& line : layout.lines) EXPECT_TRUE(line.text.ends_with(';')) << line.text;
        }
    }
}

}  // namespace
}  // namespace vantix
