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

TEST(HostedView, ForgetsWhatItKnewOfATreeThatChanged) {
    State<int> count{1};
    View reader = GeometryReader([&](const GeometryProxy&) { return words(std::to_string(count.get())); });
    Stage stage(window(100, 100), reader);
    count.set(2);
    stage.settle();
    EXPECT_EQ(stage.element(Role::text).label, "2");
}

TEST(HostedView, KeepsTheScrollOffsetWithinTheContent) {
    State<double> height{300};
    Stage stage(window(100, 100), [&] { return ScrollView(mark("a", 10, height.get())); });
    auto topAfter = [&](double points) {
        stage.view().scroll(points);
        return stage.element(Role::mark).frame.minY();
    };
    EXPECT_EQ(topAfter(-10), 0);
    EXPECT_EQ(topAfter(150), -150);
    stage.view().invalidate();
    stage.settle();
    EXPECT_EQ(topAfter(0), -150);
    EXPECT_EQ(topAfter(1e9), -200);
    stage.show(window(100, 250));
    EXPECT_EQ(topAfter(-10), -40);
    height.set(80);
    stage.settle();
    EXPECT_EQ(topAfter(0), 0);
}

TEST(HostedView, ScrollsTheFirstOfItsAreasThatCanMove) {
    auto tall = [](const char* name) { return mark(name, 10, 150); };
    auto column = [](View above, View below) { return VStack(HorizontalAlignment::leading, 0, {above, below}); };
    const std::pair<View, const char*> table[] = {
        {column(ScrollView(tall("a")), ScrollView(tall("b"))), "a 0,-60 10x150 | b 0,50 10x150"},
        {column(ScrollView(mark("fits", 10, 20)), ScrollView(tall("b"))), "fits 0,0 10x20 | b 0,-10 10x150"},
    };
    for (const auto& [tree, layout] : table) {
        Stage stage(window(10, 100), tree);
        stage.view().scroll(60);
        EXPECT_EQ(stage.marks(), layout);
    }
}

TEST(HostedView, TellsASizeOnceAndAgainWhenTheDeviceTurns) {
    State<Size> told;
    int evaluations = 0;
    Stage stage(window(50, 100), [&] {
        ++evaluations;
        View card = words("a b").onLayout("card", [&](Size size) { told.set(size); });
        return VStack({ColorRectangle(red).frame({.height = told.get().height}), card});
    });
    EXPECT_EQ(told.get(), (Size{30, 24}));
    EXPECT_EQ(evaluations, 2);
    stage.show(window(20, 100));
    EXPECT_EQ(told.get(), (Size{10, 48}));
    EXPECT_EQ(evaluations, 4);
}
