#include "DeclarativeUI/Offscreen/Aim.h"
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

std::vector<Touches> touches() {
    View box = ColorRectangle(Color::black()).frame({.width = 20, .height = 20});
    View button = Button(doNothing, box);
    View wide = Button(doNothing, ColorRectangle(Color::black()).frame({.width = 50, .height = 50}));
    View tappedBox = box.element(Role::image).onTapGesture(doNothing);
    return {
        {"PaddingAroundTheButtonIsNot", wide.padding(10), {{{24, 50}, "nothing"}, {{50, 50}, "button 0"}}},
        {"FrameAndBackgroundAroundTheButtonAre",
         button.frame({.maxWidth = infinity}).background(Color::black()).cornerRadius(5).padding(Edge::vertical, 10),
         {{{1, 50}, "button 0"}, {{99, 50}, "button 0"}, {{50, 27}, "nothing"}}},
        {"SmallButtonsShareTheGapAndGrowWhereThereIsRoom",
         HStack({button, button}),
         {{{7, 50}, "button 0"}, {{49.5, 50}, "button 0"}, {{50.5, 50}, "button 1"}, {{5, 50}, "nothing"}}},
        {"SmallButtonLeavesPicturesTheirTaps",
         VStack(HorizontalAlignment::center, 2, {button, tappedBox}),
         {{{50, 50.5}, "button 0"}, {{50, 51}, "image 0"}, {{50, 7}, "button 0"}, {{50, 4}, "nothing"}}},
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
        {"TapGestureOutsideThePaddingMeetsTheElementInside",
         box.element(Role::card).padding(10).onTapGesture(doNothing),
         {{{50, 50}, "card 0"}, {{32, 50}, "nothing"}}},
        {"TapGestureWithoutElement", box.onTapGesture(doNothing), {{{50, 50}, "something"}}},
        {"TapGestureInsideAnElement",
         VStack({box.onTapGesture(doNothing)}).element(Role::card),
         {{{50, 50}, "something"}}},
        {"SameTappedViewTwice", VStack({tappedBox, tappedBox}), {{{50, 30}, "image 0"}, {{50, 70}, "image 1"}}},
        {"NothingOutsideTheViewport",
         VStack({mark("", 100, 20),
                 ScrollView(HStack({button, tappedBox.cornerRadius(1)}).padding(Edge::top, 62)).frame({.height = 70})}),
         {{{36, 95}, "button 0"}, {{64, 95}, "image 0"}, {{36, 99.5}, "nothing"}, {{64, 99.5}, "nothing"}}},
    };
}

}  // namespace

TEST(Touch, MatchesItsTable) {
    for (const auto& [name, tree, taps] : touches()) {
        Stage stage(window(100, 100), tree);
        for (const auto& [point, met] : taps)
            EXPECT_EQ(stage.met(point), met) << name << " " << point.x << "," << point.y;
    }
}

TEST(Touch, OnAButtonIsItsOwnWhateverGestureIsAroundIt) {
    std::string tapped;
    auto tells = [&tapped](const char* name) { return [&tapped, name] { tapped += name; }; };
    Stage stage(window(100, 100), Button(tells("button "), mark("", 50, 50))
                                      .onTapGesture(tells("inner "))
                                      .padding(10)
                                      .background(Color::black())
                                      .onTapGesture(tells("outer ")));
    stage.view().hitTest({50, 50}).action();
    stage.view().hitTest({20, 50}).action();
    EXPECT_EQ(tapped, "button outer ");
}

TEST(Touch, TargetsNeitherMeetNorLeaveTheView) {
    View row = PlainButton(doNothing, mark("", 100, 60)).element(Role::option);
    View close = PlainButton(doNothing, mark("", 44, 44)).element(Role::close);
    View below = Button(doNothing, mark("", 20, 20));
    Stage stage(window(100, 100), ScrollView(VStack(HorizontalAlignment::center, 0,
                                                    {row.overlay(Alignment::topTrailing(), close), mark("", 1, 30),
                                                     below, below.padding(Edge::top, 90)})));
    EXPECT_EQ(stage.element(Role::option).target, (Rect{{0, 0}, {56, 60}}));
    EXPECT_EQ(stage.element(Role::close).target, (Rect{{56, 0}, {44, 44}}));
    EXPECT_EQ(stage.element(Role::button, 0).target, (Rect{{28, 66}, {44, 34}}));
    EXPECT_EQ(stage.element(Role::button, 1).target.size.height, 0);
}

TEST(Touch, OnAnElementScrollsItIntoViewAndAimsBesideControls) {
    View covered = Button(doNothing, mark("", 100, 500));
    Stage stage(window(100, 100), ScrollView(VStack(HorizontalAlignment::center, 0,
                                                    {mark("", 10, 300), covered, Button(doNothing, mark("", 100, 20))})
                                                 .frame({.width = 100})
                                                 .element(Role::card)
                                                 .onTapGesture(doNothing)));
    for (auto [role, index] : {std::pair(Role::button, 1), {Role::card, 0}, {Role::button, 0}}) {
        auto met = aimAt(stage.view(), stage.element(role, index));
        ASSERT_TRUE(met.element && met.action) << roleName(role);
        EXPECT_EQ(met.element->role, role);
        EXPECT_EQ(met.element->index, index);
    }
    EXPECT_FALSE(aimAt(stage.view(), {.role = Role::star}).action);
}

TEST(Touch, OutsideABannersCardBelongsToTheApplication) {
    View card = mark("", 20, 20).element(Role::card).padding();
    EXPECT_TRUE(Stage(window(100, 100), card).view().claimsTouch({1, 1}));

    Stage banner(window(100, 100), ScrollView(card).passesTouchesOutsideCard());
    EXPECT_TRUE(banner.view().claimsTouch({50, 20}));
    EXPECT_FALSE(banner.view().claimsTouch({50, 10}));
    EXPECT_FALSE(banner.view().claimsTouch({50, 37}));
}
