#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

struct Picture {
    const char* name;
    View tree;
    const char* drawing;
};

std::vector<Picture> pictures() {
    View ab = words("ab");
    View wide = words("ab cdef").frame({.width = 60});
    View shape = FilledCircle(blue).frame({.width = 20, .height = 10});
    return {
        {"BackgroundOutsidePadding", ab.padding(5).background(red), "fill 35,33 30x34 #ff0000 | text 40,58 'ab'"},
        {"BackgroundsLieOverOneAnother", ab.background(red).padding(2).background(blue),
         "fill 38,36 24x28 #0000ff | fill 40,38 20x24 #ff0000 | text 40,58 'ab'"},
        {"NoBackground", ab.background({}).background(Color::clear()), "text 40,58 'ab'"},
        {"BackgroundRunsUnderIgnoredSafeArea",
         ab.frame({.maxWidth = infinity, .maxHeight = infinity}).background(red).ignoresSafeArea(Edge::all),
         "fill 0,0 100x100 #ff0000 | text 40,58 'ab'"},
        {"RoundedBackground", ab.background(red).cornerRadius(5),
         "clip 40,38 20x24 r5 | fill 40,38 20x24 #ff0000 r5 | text 40,58 'ab' | unclip"},
        {"SquareBackgroundAroundRoundedContent", ab.cornerRadius(5).padding(1).background(red),
         "fill 39,37 22x26 #ff0000 | clip 40,38 20x24 r5 | text 40,58 'ab' | unclip"},
        {"LinesAtTheLeadingEdge", wide, "text 30,46 'ab' | text 30,70 'cdef'"},
        {"LinesCentred", wide.multilineTextAlignment(TextAlignment::center), "text 40,46 'ab' | text 30,70 'cdef'"},
        {"LinesAtTheTrailingEdge", wide.multilineTextAlignment(TextAlignment::trailing),
         "text 50,46 'ab' | text 30,70 'cdef'"},
        {"LinesFromTheRight", words("ab שלום").layoutDirection(LayoutDirection::rightToLeft).frame({.width = 60}),
         "text 50,46 'ab' | text 30,70 'שלום'"},
        {"TextOfItsOwnDirection", words("שלום"), "text 30,58 'שלום' rtl"},
        {"LineBreaksStay", words("a\n\nb"), "text 45,34 'a' | text 45,82 'b'"},
        {"ButtonsLinesCentred", Button([] {}, wide), "text 40,46 'ab' | text 30,70 'cdef'"},
        {"OverlayAbove", ab.overlay(Alignment::topTrailing(), shape), "text 40,58 'ab' | disc 45,38 10x10 #0000ff"},
        {"Shapes",
         HStack(VerticalAlignment::top, 0,
                {StrokedCircle(red, 2).frame({.width = 10, .height = 10}),
                 ColorRectangle(blue).frame({.width = 10, .height = 10})}),
         "ring 40,45 10x10 #ff0000 w2 | fill 50,45 10x10 #0000ff"},
        {"SymbolFollowsFontAndTint", SymbolImage("star.fill").font(Font::system(16)).foregroundColor(red),
         "image 40,40 20x20 #ff0000"},
        {"ScrolledContentIsClipped", ScrollView(ab), "clip 0,0 100x100 | text 40,20 'ab' | unclip"},
    };
}

}  // namespace

TEST(Painting, MatchesItsTable) {
    for (const auto& [name, tree, drawing] : pictures()) {
        EXPECT_EQ(Stage(window(100, 100), tree).drawing(), drawing) << name;
    }
}

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
