#include "VantixQt/QtFontCatalogue.h"
#include "VantixQt/QtTextMeasurer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace vantix {
namespace {

constexpr double unbounded = std::numeric_limits<double>::infinity();

const std::vector<std::string> textsOfManyScripts = {
    "Welcome back! 50 % off everything until Sunday night, don't miss it.",
    "Donaudampfschifffahrtsgesellschaftskapitänsmütze",
    "مرحبا بك في متجرنا! خصم 50% على كل شيء حتى يوم الأحد، لا تفوت الفرصة Inter 12.",
    "שלום עולם, זהו טקסט בעברית עם English באמצע ומספר 123.",
    "欢迎回来！周日之前全场五折，不要错过这个机会，快来看看吧。",
    "日本語のテキスト、カタカナとひらがな。",
    "Emoji 🎉🎉🎉 ❤ mixed 中文 with עברית, and e\u0301\u0302 stacked marks",
    "   leading and trailing   ",
    "a\tb\tc\u00A0d",
    "",
};

class QtTextMeasurerTest : public testing::Test {
protected:
    TextLayout layOut(std::string_view text, double width = unbounded, double size = 16) const {
        return measurer_.layOut(text, Font::system(size), width);
    }

    std::vector<std::string> lines(std::string_view text, double width = unbounded) const {
        std::vector<std::string> result;
        for (const TextLine& line : layOut(text, width).lines) result.push_back(line.text);
        return result;
    }

    double width(std::string_view text) const { return layOut(text).size.width; }

    QtTextMeasurer measurer_{std::make_shared<QtFontCatalogue>()};
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

TEST_F(QtTextMeasurerTest, BreaksEveryScriptWithinTheWidthAndLosesNothing) {
    for (const std::string& text : textsOfManyScripts) {
        for (double maximumWidth : {40.0, 123.4, 350.0, unbounded}) {
            TextLayout layout = layOut(text, maximumWidth);
            double widest = 0;
            for (const TextLine& line : layout.lines) {
                EXPECT_LE(line.width, maximumWidth) << text;
                EXPECT_NEAR(line.width, width(line.text), 0.5) << line.text;
                widest = std::max(widest, line.width);
            }
            EXPECT_EQ(withoutBlanks(joined(layout)), withoutBlanks(text));
            EXPECT_EQ(layout.size.width, widest);
            EXPECT_DOUBLE_EQ(layout.size.height, layout.lineHeight * static_cast<double>(layout.lines.size()));
            EXPECT_LT(layout.ascent, layout.lineHeight);
        }
    }
}

TEST_F(QtTextMeasurerTest, FitsIntoTheWidthThatItMeasured) {
    for (const std::string& text : textsOfManyScripts) {
        for (double size : {7.3, 11.0, 16.0, 17.6, 40.0}) {
            double measured = layOut(text, unbounded, size).size.width;
            EXPECT_EQ(layOut(text, measured, size).lines.size(), 1u) << text << " at " << size;
        }
    }
}

TEST_F(QtTextMeasurerTest, IsTheSameAtEveryScale) {
    for (const std::string& text : textsOfManyScripts) {
        TextLayout small = layOut(text, 120, 13.37);
        TextLayout large = layOut(text, 360, 3 * 13.37);
        ASSERT_EQ(joined(small), joined(large));
        ASSERT_EQ(small.lines.size(), large.lines.size());
        EXPECT_NEAR(3 * small.size.width, large.size.width, 1e-9);
        EXPECT_NEAR(3 * small.lineHeight, large.lineHeight, 1e-9);
    }
}

TEST_F(QtTextMeasurerTest, BreaksAtWordBoundaries) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(lines("hello world", width("hello w")), (Lines{"hello", "world"}));
    EXPECT_EQ(lines("hello   world", width("world")), (Lines{"hello", "world"}));
    EXPECT_EQ(lines("hello\u00A0you all", width("hello\u00A0you")), (Lines{"hello\u00A0you", "all"}));
    EXPECT_EQ(lines("欢迎回来周日之前", width("欢迎回")), (Lines{"欢迎回", "来周日", "之前"}));
    EXPECT_EQ(lines("欢迎回来。", width("欢迎回来")), (Lines{"欢迎回", "来。"})) << "no line begins with a full stop";
    EXPECT_EQ(lines("مرحبا بك", width("مرحبا")), (Lines{"مرحبا", "بك"}));
    EXPECT_EQ(lines("WWWW", width("WWW")), (Lines{"WWW", "W"})) << "a word that alone is too wide";
    EXPECT_EQ(lines("ببب", width("ببب") * 0.7), (Lines{"بب\u200D", "\u200Dب"})) << "joined letters keep their forms";
    EXPECT_EQ(lines("ae\u0301🎉", 0), (Lines{"a", "e\u0301", "🎉"})) << "what the reader sees as one character";
}

TEST_F(QtTextMeasurerTest, BreaksAtNewlines) {
    using Lines = std::vector<std::string>;
    const std::vector<std::pair<std::string, Lines>> cases = {
        {"", {""}},
        {"\n", {"", ""}},
        {"a\nb", {"a", "b"}},
        {"a\r\nb\rc", {"a", "b", "c"}},
        {"a\u2028b\u2029c", {"a", "b", "c"}},
        {"a \n\n b\n", {"a", "", " b", ""}},
        {std::string("a\0b", 3), {std::string("a\0b", 3)}},
        {"a\xFFz\xC3", {"a\uFFFDz\uFFFD"}},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(lines(text), expected) << text;
}

TEST_F(QtTextMeasurerTest, TellsTheDirectionOfTheFirstStrongCharacter) {
    for (const char* text : {"مرحبا", "שלום hello", "123 עברית", "\n«שלום»"}) {
        EXPECT_TRUE(layOut(text).rightToLeft) << text;
    }
    for (const char* text : {"", "hello שלום", "123", "中文 עברית"}) EXPECT_FALSE(layOut(text).rightToLeft) << text;
}

TEST_F(QtTextMeasurerTest, GivesAllLinesTheHeightOfTheHighestFont) {
    double latin = layOut("Hello").lineHeight;
    double chinese = layOut("中文").lineHeight;
    EXPECT_GT(latin, 16);
    EXPECT_GE(chinese, latin);
    EXPECT_DOUBLE_EQ(layOut("Hello\n中文").lineHeight, std::max(latin, chinese));
    EXPECT_DOUBLE_EQ(layOut("").lineHeight, latin) << "an empty line is as high as any other";
}

TEST_F(QtTextMeasurerTest, TellsFontsApart) {
    auto measured = [this](const Font& font) { return measurer_.layOut("Hamburgefons", font, unbounded).size.width; };
    double regular = measured(Font::system(16));
    EXPECT_GT(measured(Font::system(16, FontWeight::bold)), regular);
    EXPECT_NE(measured(Font::italicSystem(16)), regular);
    EXPECT_EQ(measured(Font::named("Inter", 16)), regular);
    EXPECT_EQ(measured(Font::named("no such font", 16)), regular);
    EXPECT_EQ(measured(Font::named("Inter-Bold", 16)), measured(Font::system(16, FontWeight::bold)));
    EXPECT_EQ(measured(Font::named("Inter Bold", 16)), measured(Font::system(16, FontWeight::bold)));
    EXPECT_LT(measured(Font::named("DejaVuSansCondensed-Bold", 16)), measured(Font::named("DejaVuSans-Bold", 16)));
    EXPECT_EQ(measured(Font::system(0)), measured(Font::system(1)));
    EXPECT_EQ(measured(Font::system(-5)), measured(Font::system(1)));
}

TEST_F(QtTextMeasurerTest, KeepsEveryCharacterOfAVeryLongText) {
    for (std::string unit : {"hello world ", "🎉", "欢迎回来", "W", "e\u0301"}) {
        std::string text = "x";
        while (text.size() < 100'000) text += unit;
        for (double maximumWidth : {300.0, unbounded}) {
            TextLayout layout = layOut(text, maximumWidth);
            EXPECT_EQ(withoutBlanks(joined(layout)), withoutBlanks(text)) << unit;
            EXPECT_LE(layout.size.width, maximumWidth) << unit;
        }
    }
}

TEST_F(QtTextMeasurerTest, BreaksAVeryLongTextBetweenWords) {
    std::string text;
    while (text.size() < 20'000) text += "hello, hello; ";
    for (const std::string& line : lines(text, 300)) {
        EXPECT_TRUE(line.starts_with("hello")) << line;
        EXPECT_TRUE(line.ends_with(",") || line.ends_with(";")) << line;
    }
}

}  // namespace
}  // namespace vantix
