#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

const auto doNothing = [] {};

/// What taps at some points of a window of 100 by 100 points meet.
struct Touches {
    const char* name;
    View tree;
    std::vector<std::pair<Point, const char*>> met;
};

void PrintTo(const Touches& touches, std::ostream* out) { *out << touches.name; }

std::vector<Touches> touches() {
    View box = ColorRectangle(Color::black()).frame({.width = 20, .height = 20});
    View button = Button(doNothing, box);
    View tappedBox = box.element(Role::image).onTapGesture(doNothing);
    return {
        {"ButtonAndNothingBeside", button, {{{50, 50}, "button 0"}, {{39, 50}, "nothing"}, {{60, 50}, "nothing"}}},
        {"LabelsPaddingIsTheButtons", Button(doNothing, box.padding(10)), {{{32, 50}, "button 0"}}},
        {"PaddingAroundTheButtonIsNot", button.padding(10), {{{32, 50}, "nothing"}, {{50, 50}, "button 0"}}},
        {"FrameAndBackgroundAroundTheButtonAre",
         button.frame({.maxWidth = infinity}).background(Color::black()).cornerRadius(5).padding(Edge::vertical, 10),
         {{{1, 50}, "button 0"}, {{99, 50}, "button 0"}, {{50, 39}, "nothing"}}},
        {"CloseControlsTarget",
         PlainButton(doNothing, box)
             .frame({.width = 44, .height = 44, .alignment = Alignment::topTrailing()})
             .element(Role::close, "Close"),
         {{{28, 71}, "close 0"}, {{27, 50}, "nothing"}}},
        {"InnermostWins",
         VStack({button, box})
             .frame({.maxWidth = infinity, .maxHeight = infinity})
             .element(Role::row)
             .onTapGesture(doNothing)
             .padding(5)
             .element(Role::card)
             .onTapGesture(doNothing),
         {{{50, 30}, "button 0"}, {{50, 60}, "row 0"}, {{50, 3}, "nothing"}}},
        {"LaterSiblingLiesAbove", ZStack(Alignment::center(), {button, tappedBox}), {{{50, 50}, "image 0"}}},
        {"OverlayLiesAbove",
         button.overlay(Alignment::topTrailing(), tappedBox.frame({.width = 10, .height = 10})),
         {{{41, 59}, "button 0"}, {{56, 42}, "image 0"}}},
        {"TapGestureLeavesOutItsPadding",
         box.padding(10).padding(5).element(Role::row).onTapGesture(doNothing).padding(5),
         {{{41, 50}, "row 0"}, {{39, 50}, "nothing"}}},
        {"TapGestureOutsideThePaddingMeetsTheElementInside",
         box.element(Role::card).padding(10).onTapGesture(doNothing),
         {{{50, 50}, "card 0"}, {{32, 50}, "nothing"}}},
        {"TapGestureInsideItsElement",
         box.padding(10).onTapGesture(doNothing).element(Role::image),
         {{{50, 50}, "image 0"}, {{32, 50}, "nothing"}}},
        {"TapGestureWithoutElement", ColorRectangle(Color::black()).onTapGesture(doNothing), {{{1, 1}, "something"}}},
        {"OptionIsItsOwnElement",
         PlainButton(doNothing, box).selected(false).element(Role::option).padding(10),
         {{{50, 50}, "option 0"}}},
        {"SameViewTwice", VStack({button, button}), {{{50, 30}, "button 0"}, {{50, 70}, "button 1"}}},
        {"SameTappedViewTwice", VStack({tappedBox, tappedBox}), {{{50, 30}, "image 0"}, {{50, 70}, "image 1"}}},
        {"NothingOutsideTheViewport",
         VStack({mark("", 100, 20), ScrollView(VStack({mark("", 20, 60), button}))}),
         {{{50, 97}, "button 0"}, {{50, 10}, "nothing"}}},
    };
}

class Touch : public testing::TestWithParam<Touches> {};

}  // namespace

TEST_P(Touch, MatchesItsTable) {
    Stage stage({{100, 100}, {}, 1, 1}, GetParam().tree);
    for (const auto& [point, met] : GetParam().met) {
        EXPECT_EQ(describe(stage.view().hitTest(point)), met) << "at " << describe(point);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Touch, testing::ValuesIn(touches()),
                         [](const auto& touches) { return std::string(touches.param.name); });

TEST(Touch, ReachesOnlyWhatIsScrolledIntoView) {
    std::string tapped;
    auto row = [&](const char* name) { return Button([&tapped, name] { tapped += name; }, mark("", 100, 60)); };
    Stage stage({{100, 100}, {}, 1, 1},
                VStack(HorizontalAlignment::center, 0,
                       {mark("bar", 100, 20),
                        ScrollView(VStack(HorizontalAlignment::center, 0, {row("a"), row("b"), row("c")}))}));
    stage.tap({50, 30});
    stage.view().scroll(60);
    stage.tap({50, 30});
    stage.tap({50, 10});
    EXPECT_EQ(tapped, "ab");
}

TEST(Touch, OnAButtonIsItsOwnWhateverGestureIsAroundIt) {
    std::string tapped;
    auto tells = [&tapped](const char* name) { return [&tapped, name] { tapped += name; }; };
    Stage stage({{100, 100}, {}, 1, 1}, Button(tells("button "), mark("", 20, 20))
                                            .onTapGesture(tells("inner "))
                                            .padding(10)
                                            .background(Color::black())
                                            .onTapGesture(tells("outer ")));
    stage.tap({50, 50});
    stage.tap({35, 50});
    EXPECT_EQ(tapped, "button outer ");
}

TEST(Touch, OnAnElementScrollsItIntoViewAndAimsBesideControls) {
    std::string tapped;
    auto tells = [&tapped](const char* name) { return [&tapped, name] { tapped += std::string(name) + " "; }; };
    View covered = Button(tells("cover"), mark("", 90, 500));
    Stage stage({{100, 100}, {}, 1, 1},
                ScrollView(VStack(HorizontalAlignment::center, 0,
                                  {mark("", 10, 300), covered, Button(tells("last"), mark("", 20, 20))})
                               .frame({.width = 100})
                               .element(Role::card)
                               .onTapGesture(tells("card"))));
    for (auto element : {stage.element(Role::button, 1), stage.element(Role::card)}) {
        auto met = stage.view().hitTest(element);
        ASSERT_TRUE(met.element && met.action);
        EXPECT_EQ(met.element->role, element.role);
        met.action();
    }
    EXPECT_EQ(tapped, "last card ");
    EXPECT_FALSE(stage.view().hitTest(AccessibleElement{.role = Role::star}).action);
}

TEST(Touch, OutsideABannersCardBelongsToTheApplication) {
    View card = mark("", 20, 20).element(Role::card).padding();
    EXPECT_TRUE(Stage({{100, 100}, {}, 1, 1}, card).view().claimsTouch({1, 1}));

    Stage banner({{100, 100}, {}, 1, 1}, ScrollView(card).passesTouchesOutsideCard());
    EXPECT_TRUE(banner.view().claimsTouch({50, 20}));
    EXPECT_FALSE(banner.view().claimsTouch({50, 10}));
    EXPECT_FALSE(banner.view().claimsTouch({50, 37}));
}
