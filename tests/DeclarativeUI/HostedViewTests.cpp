#include "DeclarativeUI/State.h"
#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(HostedView, AsksOnceForDisplayHoweverOftenStateChanges) {
    State<int> count{1};
    State<int> unread{0};
    int evaluations = 0;
    Stage stage(window(100, 100), [&] {
        ++evaluations;
        return words(std::to_string(count.get()));
    });
    count.set(1);
    unread.set(5);
    EXPECT_EQ(stage.requests, 0);
    count.set(2);
    count.set(3);
    EXPECT_EQ(stage.requests, 1);
    EXPECT_EQ(evaluations, 1);
    stage.settle();
    stage.view().evaluate(stage.measurer);
    EXPECT_EQ(evaluations, 2);
    EXPECT_EQ(stage.element(Role::text).label, "3");
}

TEST(HostedView, EvaluatesBodyAndGeometryReadersOnceWhateverIsAskedOfThem) {
    int bodies = 0;
    int readers = 0;
    Stage stage(window(100, 100), [&] {
        ++bodies;
        return VStack({mark("a", 10, 10), GeometryReader([&](const GeometryProxy& area) {
                           ++readers;
                           EXPECT_NE(HostedView::current(), nullptr);
                           return ScrollView(mark("b", area.size.width, 300));
                       })});
    });
    stage.view().scroll(20);
    stage.view().hitTest({50, 50});
    stage.view().setNeedsLayout();
    stage.settle();
    EXPECT_EQ(bodies, 1);
    EXPECT_EQ(readers, 1);
    EXPECT_EQ(HostedView::current(), nullptr);
}

TEST(HostedView, KeepsTheScrollOffsetWithinTheContent) {
    State<double> height{300};
    Stage stage(window(100, 100), [&] { return ScrollView(mark("a", 10, height.get())); });
    auto top = [&] { return stage.element(Role::mark).frame.minY(); };
    stage.view().scroll(-10);
    EXPECT_EQ(top(), 0);
    stage.view().scroll(150);
    EXPECT_EQ(top(), -150);
    stage.view().invalidate();
    stage.settle();
    EXPECT_EQ(top(), -150);
    stage.view().scroll(1e9);
    EXPECT_EQ(top(), -200);
    stage.show(window(100, 250));
    EXPECT_EQ(top(), -50);
    height.set(80);
    stage.settle();
    EXPECT_EQ(top(), 0);
}

TEST(HostedView, ScrollsTheFirstOfItsAreasThatCanMove) {
    auto tall = [](const char* name) { return mark(name, 10, 150); };
    auto column = [](View above, View below) { return VStack(HorizontalAlignment::leading, 0, {above, below}); };
    const std::pair<View, const char*> table[] = {
        {ScrollView(column(tall("outer"), ScrollView(tall("inner")))), "outer 0,-60 10x150 | inner 0,90 10x150"},
        {column(ScrollView(tall("a")), ScrollView(tall("b"))), "a 0,-60 10x150 | b 0,50 10x150"},
        {column(ScrollView(mark("fits", 10, 20)), ScrollView(tall("b"))), "fits 0,0 10x20 | b 0,-10 10x150"},
    };
    for (const auto& [tree, layout] : table) {
        Stage stage({{10, 100}, {}, 1, 1}, tree);
        stage.view().scroll(60);
        EXPECT_EQ(stage.marks(), layout);
    }
}

TEST(HostedView, FooterMeasuresItsCardAndRestsOnTheBottomAlsoAfterTheDeviceTurns) {
    State<Size> cardSize;
    int evaluations = 0;
    auto footer = [&] {
        ++evaluations;
        return GeometryReader([&](const GeometryProxy& area) {
            double rest = area.size.height - cardSize.get().height;
            View spacer =
                cardSize.get().height > 0 && rest > 0 ? ColorRectangle(Color::clear()).frame({.height = rest}) : View();
            View card = words("a b").frame({.maxWidth = infinity}).element(Role::mark, "card").padding(2);
            return ScrollView(VStack(HorizontalAlignment::center, 0,
                                     {spacer, card.onLayout("card", [&](Size size) { cardSize.set(size); })}));
        });
    };
    Stage stage({{50, 100}, {10, 0, 20, 0}, 1, 1}, footer);
    EXPECT_EQ(stage.marks(), "card 2,54 46x24");
    EXPECT_EQ(evaluations, 2);

    stage.show({{33, 200}, {}, 1, 1});
    EXPECT_EQ(stage.marks(), "card 2,150 29x48");
}

TEST(HostedView, KeepsObjectsForItsLife) {
    int made = 0;
    auto make = [&]() -> std::shared_ptr<void> { return std::make_shared<int>(++made); };
    std::weak_ptr<void> kept;
    {
        Stage stage(window(1, 1), [&] {
            kept = HostedView::current()->object("loader", make);
            return View();
        });
        stage.view().invalidate();
        stage.settle();
        EXPECT_EQ(made, 1);
        EXPECT_NE(stage.view().object("other", make), kept.lock());
    }
    EXPECT_TRUE(kept.expired());
}
