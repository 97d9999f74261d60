#include "VantixQt/QtFontCatalogue.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace vantix {
namespace {

TEST(QtFontCatalogue, FindsExactNamesOnly) {
    QtFontCatalogue catalogue;
    for (const char* name : {"Inter", "Inter Medium", "Inter-SemiBoldItalic", "DejaVu Sans", "DejaVu Sans Bold",
                             "DejaVuSans-Bold", "Droid Sans Fallback"}) {
        EXPECT_TRUE(catalogue.contains(name)) << name;
    }
    for (const char* name : {"", "inter", "INTER", "Bold", "BOLD", "ITALIC", "REGULAR", "Inter ", "Inter:bold", "Sans",
                             "sans-serif", "Helvetica", "DejaVuSans-BOLD"}) {
        EXPECT_FALSE(catalogue.contains(name)) << name;
    }
}

TEST(QtFontCatalogue, KnowsWhichFaceBearsAName) {
    QtFontCatalogue catalogue;
    const FontFace* family = catalogue.find("DejaVu Sans");
    ASSERT_TRUE(family);
    EXPECT_EQ(family->style, "");
    for (const char* name : {"Inter Bold Italic", "Inter-BoldItalic"}) {
        const FontFace* face = catalogue.find(name);
        ASSERT_TRUE(face) << name;
        EXPECT_EQ(face->family, "Inter") << name;
        EXPECT_EQ(face->style, "Bold Italic") << name;
        EXPECT_EQ(face->weight, 700) << name;
        EXPECT_TRUE(face->italic) << name;
    }
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
