#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(Painting, ScalesFontsAndDrawsNoneBelowOnePoint) {
    auto drawnSize = [](double fontSize, double textScale) {
        Stage stage({{1000, 100}, {}, 1, textScale}, Text("a").font(Font::system(fontSize)));
        EXPECT_EQ(stage.element(Role::text).font->size, std::get<DrawText>(stage.view().displayList().at(0)).font.size);
        return stage.element(Role::text).font->size;
    };
    EXPECT_EQ(drawnSize(16, 1), 16);
    EXPECT_EQ(drawnSize(16, 1.5), 24);
    EXPECT_EQ(drawnSize(0, 1), 1);
    EXPECT_EQ(drawnSize(-7, 2), 1);
}

TEST(Painting, HairlinesAndTextsFitThePixelsOfTheScreen) {
    Stage stage({{100, 100}, {}, 3, 1}, VStack(HorizontalAlignment::leading, 0,
                                               {Text("abc").font(Font::system(11)).background(red), Divider()}));
    // 16.5 by 13.2 points are 49.5 by 39.6 pixels.
    auto background = std::get<FillRect>(stage.view().displayList().at(0));
    EXPECT_DOUBLE_EQ(background.frame.size.width, 50 / 3.0);
    EXPECT_DOUBLE_EQ(background.frame.size.height, 40 / 3.0);
    auto line = std::get<FillRect>(stage.view().displayList().back());
    EXPECT_DOUBLE_EQ(line.frame.size.height, 1 / 3.0);
}

TEST(Painting, FillsARoundedBackgroundRound) {
    Stage stage(window(100, 100), words("ab").background(red).cornerRadius(5));
    EXPECT_EQ(std::get<FillRect>(stage.view().displayList().at(1)).cornerRadius, 5);
}

TEST(Painting, SkipsTextLinesThatAreScrolledAway) {
    std::string text = "line";
    for (int line = 1; line < 1000; ++line) text += "\nline";
    Stage stage(window(100, 100), ScrollView(words(text)));
    stage.view().scroll(12000);
    EXPECT_LE(stage.view().displayList().size(), 8u);
    EXPECT_EQ(stage.view().elements().size(), 1u);
}

TEST(Painting, UnknownSymbolsAndMissingPicturesAreEmptyViews) {
    for (const View& view : {SymbolImage("../View.h"), ResizableImage({}), SourcedImage(nullptr)}) {
        EXPECT_TRUE(view.isEmpty());
    }
}
