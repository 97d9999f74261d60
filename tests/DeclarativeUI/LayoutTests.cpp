#include "DeclarativeUI/Layout/Element.h"
#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace vantix;

namespace {

/// One tree at a row of window widths; windows are 100 points high.
struct Sweep {
    const char* name;
    View tree;
    std::vector<std::pair<double, const char*>> layouts;
};

/// Answers every offer with other lengths than those beside it, so that nothing that was measured serves twice.
class RestlessElement final : public Element {
public:
    RestlessElement(int number, int& measures) : number_(number), measures_(measures) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        ++measures_;
        return {answer(proposal.height), answer(proposal.width)};
    }
    void place(const Rect&, const Proposal&, const Environment&, LayoutPass&) const override {}

private:
    double answer(const std::optional<double>& offer) const {
        return 1 + std::fmod(std::min(offer.value_or(60), 1e6) * 0.37 + number_ * 1.7321, 7);
    }

    int number_;
    int& measures_;
};

View textMark(const char* text) { return words(text).element(Role::mark); }
View flexible(const char* name) { return mark(name, {}, 10); }

std::vector<Sweep> sweeps() {
    constexpr auto leading = HorizontalAlignment::leading;
    constexpr auto trailing = HorizontalAlignment::trailing;
    constexpr auto top = VerticalAlignment::top;
    return {
        {"FixedBeforeFlexible",
         HStack({flexible("flexible"), mark("fixed", 40, 10)}),
         {{200, "flexible 0,45 152x10 | fixed 160,45 40x10"},
          {60, "flexible 0,45 12x10 | fixed 20,45 40x10"},
          {40, "flexible -4,45 0x10 | fixed 4,45 40x10"}}},
        {"ShorterTextLeavesItsRest",
         HStack(top, {textMark("ab"), textMark("ab cd ef")}),
         {{200, "ab 46,38 20x24 | ab cd ef 74,38 80x24"},
          {80, "ab 1,26 20x24 | ab cd ef 29,26 50x48"},
          {48, "ab 0,14 20x24 | ab cd ef 28,14 20x72"}}},
        {"TwoTextsStandAsTheyWereMeasured",
         HStack(top, 0, {textMark("aaaaaaa bbbbbbb"), textMark("dddddddddd eeeeeeeeeee")}).frame({.minHeight = 60}),
         {{300, "aaaaaaa bbbbbbb 20,26 150x24 | dddddddddd eeeeeeeeeee 170,26 110x48"}}},
        {"TextBesideSpacerTakesTheRow",
         HStack({mark("mark", 20, 20), textMark("abcd efgh"), Spacer(10)}),
         {{200, "mark 0,40 20x20 | abcd efgh 28,38 90x24"},
          {136, "mark 0,40 20x20 | abcd efgh 28,38 90x24"},
          {135, "mark 0,40 20x20 | abcd efgh 28,26 40x48"}}},
        {"SpacersShareWhatIsLeft",
         HStack(top, 0, {Spacer(), mark("a", 20, 10), Spacer(30), mark("b", 20, 10)}),
         {{140, "a 50,45 20x10 | b 120,45 20x10"}, {80, "a 10,45 20x10 | b 60,45 20x10"}}},
        {"EmptyViewsLeaveNoGap",
         HStack({View(), mark("a", 10, 10), View().padding().background(Color::black()), mark("b", 10, 10), View()}),
         {{100, "a 36,45 10x10 | b 54,45 10x10"}}},
        {"ColumnAlignments",
         VStack(leading, 0, {mark("wide", 60, 10), VStack(trailing, 0, {mark("a", 20, 10), mark("b", 10, 10)})}),
         {{100, "wide 20,35 60x10 | a 20,45 20x10 | b 30,55 10x10"}}},
        {"TextsWrap",
         VStack(leading, 0, {textMark("ab cd ef"), textMark("abcdefg")}),
         {{80, "ab cd ef 0,26 80x24 | abcdefg 0,50 70x24"},
          {70, "ab cd ef 0,14 50x48 | abcdefg 0,62 70x24"},
          {20, "ab cd ef 0,-34 20x72 | abcdefg 0,38 20x96"}}},
        {"FullWidthFrameAlignsItsContent",
         mark("in", 20, 10)
             .frame({.maxWidth = infinity, .alignment = Alignment::topTrailing()})
             .element(Role::mark, "out"),
         {{100, "out 0,45 100x10 | in 80,45 20x10"}, {10, "out -5,45 20x10 | in -5,45 20x10"}}},
        {"HeightAtLeast",
         VStack(HorizontalAlignment::center, 0,
                {mark("low", 10, 10).frame({.minHeight = 40}).element(Role::mark, "room"),
                 mark("high", 10, 50).frame({.minHeight = 40})}),
         {{10, "room 0,5 10x40 | low 0,20 10x10 | high 0,45 10x50"}}},
        {"PaddingNarrowsWhatIsOffered",
         textMark("ab cd").padding(Edge::leading, 10).padding(Edge::vertical, 1).padding(Edge::trailing, 20),
         {{80, "ab cd 10,38 50x24"}, {79, "ab cd 25,26 20x48"}}},
        {"DividerIsOnePixelAcrossTheStack",
         VStack({mark("a", 30, 10), Divider().element(Role::mark, "line"), mark("b", 30, 10)}),
         {{50, "a 10,32 30x10 | line 0,50 50x1 | b 10,59 30x10"}}},
        {"RightToLeftMirrorsRowsAlignmentsAndPaddings",
         VStack(leading, 0,
                {HStack({mark("first", 10, 10), mark("second", 20, 10), Spacer()}),
                 mark("padded", 10, 10).padding(Edge::leading, 5),
                 mark("trailing", 10, 10).frame({.maxWidth = infinity, .alignment = Alignment::topTrailing()}),
                 HStack({mark("back", 10, 10), Spacer()}).layoutDirection(LayoutDirection::leftToRight)})
             .layoutDirection(LayoutDirection::rightToLeft),
         {{100,
           "first 90,30 10x10 | second 62,30 20x10 | padded 85,40 10x10 | trailing 0,50 10x10 | back 0,60 10x10"}}},
    };
}

}  // namespace

TEST(Layout, MatchesItsTable) {
    for (const auto& [name, tree, layouts] : sweeps()) {
        for (const auto& [width, layout] : layouts) {
            EXPECT_EQ(Stage(window(width, 100), tree).marks(), layout) << name << ", " << width << " points wide";
        }
    }
}

TEST(Layout, IgnoredSafeAreasAreCoveredAndOthersAreNot) {
    const SceneTraits phone{{100, 200}, {20, 3, 10, 4}, 1, 1};
    View all = mark("all", {}, {});
    const std::pair<View, const char*> table[] = {
        {all.ignoresSafeArea(Edge::top), "all 3,0 93x190"},
        {all.ignoresSafeArea(Edge::vertical), "all 3,0 93x200"},
        {all.ignoresSafeArea(Edge::horizontal), "all 0,20 100x170"},
        {all.ignoresSafeArea(Edge::trailing).layoutDirection(LayoutDirection::rightToLeft), "all 0,20 96x170"},
        {mark("card", 20, 20).ignoresSafeArea(Edge::all), "card 40,95 20x20"},
        {GeometryReader(
             [](const GeometryProxy& area) { return mark("read", area.size.width, area.windowSize().height); }),
         "read 3,20 93x200"},
    };
    for (const auto& [tree, layout] : table) EXPECT_EQ(Stage(phone, tree).marks(), layout);
}

TEST(Layout, StaysFiniteWhateverTheNumbers) {
    for (double extreme : {-50.0, 0.0, 1e300, infinity, -infinity, std::nan("")}) {
        View tree = VStack(HorizontalAlignment::leading, extreme,
                           {words("abc").padding(extreme).frame({.width = extreme, .minHeight = extreme}),
                            Text("abc").font(Font::system(extreme)), SymbolImage("square").font(Font::system(extreme)),
                            HStack({Spacer(extreme), Divider()}).frame({.maxWidth = extreme, .maxHeight = extreme}),
                            words("inset").padding(EdgeInsets{extreme, -extreme, extreme, extreme}),
                            words("tapped").cornerRadius(extreme).element(Role::mark, "tapped")});
        const SceneTraits windows[] = {window(100, 100),
                                       window(extreme, extreme),
                                       {{100, 100}, {extreme, extreme, extreme, extreme}, 1, 1},
                                       {{100, 100}, {}, extreme, 1},
                                       {{100, 100}, {}, 1, extreme}};
        for (const SceneTraits& traits : windows) {
            Stage stage(traits, ScrollView(tree));
            stage.view().scroll(extreme);
            for (const AccessibleElement& element : stage.view().elements()) {
                auto [origin, size] = element.frame;
                EXPECT_TRUE(std::isfinite(origin.x + origin.y + size.width + size.height)) << extreme;
                EXPECT_TRUE(size.width >= 0 && size.height >= 0) << extreme;
            }
        }
    }
}

TEST(Layout, WorkForNestedStacksGrowsWithTheSquareOfTheirDepth) {
    constexpr int depth = 28;
    int measures = 0;
    View tree = words("inside");
    for (int level = 0; level < depth; ++level) {
        View restless(std::make_shared<RestlessElement>(level, measures));
        tree = VStack({restless, HStack({restless, tree})});
    }
    Stage stage(window(1e5, 1e5), tree);
    EXPECT_LT(measures, 8 * depth * depth);
}

TEST(Layout, LaysOutEveryTextOnceForOneWidth) {
    constexpr int count = 10000;
    std::vector<View> rows;
    for (int row = 0; row < count; ++row) rows.push_back(words("row " + std::to_string(row)));
    Stage stage(window(400, 400), ScrollView(VStack(std::move(rows))));
    int inFirstLayout = stage.measurer.count;
    EXPECT_LE(inFirstLayout, 2 * count);

    stage.view().scroll(1000);
    EXPECT_EQ(stage.measurer.count, inFirstLayout);
}
