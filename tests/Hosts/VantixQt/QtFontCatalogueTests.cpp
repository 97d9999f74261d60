#include "VantixQt/Drawing/QtFontCatalogue.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace vantix {
namespace {

TEST(QtFontCatalogue, FindsExactNamesOnly) {
    QtFontCatalogue catalogue;
    for (const char* name : {"Inter", "Inter Medium", "Inter-SemiBoldItalic", "DejaVuSans-Bold", "Noto Sans CJK JP"}) {
        EXPECT_TRUE(catalogue.contains(name)) << name;
    }
    for (const char* name : {"", "inter", "BOLD", "Inter ", "Inter:bold", "Sans", "sans-serif", "Helvetica"}) {
        EXPECT_FALSE(catalogue.contains(name)) << name;
    }
    EXPECT_EQ(catalogue.find("DejaVu Sans")->style, "") << "a family as a whole";
    const FontFace* face = catalogue.find("Inter-BoldItalic");
    EXPECT_EQ(std::string(face->family).append(face->style), "InterBold Italic");
    EXPECT_EQ(face->weight, 700);
    EXPECT_TRUE(face->italic);
}

TEST(QtFontCatalogue, AnswersThreadsThatAskFirstAtTheSameTime) {
    QtFontCatalogue catalogue;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] { EXPECT_TRUE(catalogue.contains("Inter")); });
    }
}

}  // namespace
}  // namespace vantix
