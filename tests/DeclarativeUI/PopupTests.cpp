#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

constexpr Color paper{1, 1, 0.5, 1};
constexpr Color ink{0.25, 0, 0, 1};

/// A card over the application, as a template would write it; records what taps do.
struct Popup {
    std::string message;
    std::string* tapped;

    View body() const {
        return GeometryReader([self = *this](const GeometryProxy& area) {
            return ScrollView(VStack({self.title(), self.text(), self.button()})
                                  .background(paper)
                                  .cornerRadius(5)
                                  .overlay(Alignment::topTrailing(), self.closeRow())
                                  .element(Role::card)
                                  .onTapGesture(self.tell("card"))
                                  .padding()
                                  .frame({.minHeight = area.size.height, .maxWidth = infinity}));
        });
    }

private:
    View title() const {
        return words("Tea").frame({.maxWidth = infinity}).background(ink).element(Role::title).padding(Edge::top);
    }
    View text() const { return words(message).frame({.maxWidth = infinity}).element(Role::message).padding(Edge::top); }
    View button() const {
        return Button(tell("button"), words("Buy").padding())
            .frame({.maxWidth = infinity})
            .background(ink)
            .cornerRadius(5)
            .padding(Edge::top);
    }
    View closeRow() const {
        View cross = FilledCircle(ink).frame({.width = 20, .height = 20});
        View close = PlainButton(tell("close"), cross)
                         .frame({.width = 44, .height = 44, .alignment = Alignment::topTrailing()})
                         .element(Role::close, "Close");
        return HStack(VerticalAlignment::top, {Spacer(), close}).padding(Edge::top | Edge::trailing, 5);
    }
    std::function<void()> tell(const char* name) const {
        return [name, tapped = tapped] { *tapped += name + std::string(" "); };
    }
};

const SceneTraits phone{{232, 400}, {40, 0, 20, 0}, 1, 1};

std::string frames(Stage& stage) {
    std::string list;
    for (const AccessibleElement& element : stage.view().elements()) {
        list += std::string(roleName(element.role)) + " " + describe(element.frame) + "\n";
    }
    return list;
}

}  // namespace

TEST(Popup, IsCentredInTheSafeArea) {
    std::string tapped;
    Stage stage(phone, Popup{"Green and black, from the hills", &tapped}.body());
    EXPECT_EQ(frames(stage),
              "card 16,114 200x192\n"
              "title 16,130 200x24\n"
              "message 16,178 200x48\n"
              "button 16,250 200x56\n"
              "close 167,119 44x44\n");
    EXPECT_EQ(stage.drawing(),
              "clip 0,40 232x340 | "
              "clip 16,114 200x192 r5 | fill 16,114 200x192 #ffff80 r5 | "
              "fill 16,130 200x24 #400000 | text 101,150 'Tea' | "
              "text 36,198 'Green and black,' | text 36,222 'from the hills' | "
              "clip 16,250 200x56 r5 | fill 16,250 200x56 #400000 r5 | text 101,286 'Buy' | unclip | unclip | "
              "disc 191,119 20x20 #400000 | unclip");
}

TEST(Popup, GivesEachTapToTheInnermost) {
    std::string tapped;
    Stage stage(phone, Popup{"Green and black, from the hills", &tapped}.body());
    for (Point point : {Point{20, 260}, {210, 300}, {20, 120}, {100, 200}, {170, 125}, {15, 120}, {20, 310}}) {
        stage.tap(point);
    }
    EXPECT_EQ(tapped, "button button card card close ");
}

TEST(Popup, ScrollsWhenItIsTallerThanTheScreenAndIsTappedThroughScrolling) {
    std::string tapped;
    std::string message = "line";
    for (int line = 1; line < 20; ++line) message += "\nline";
    Stage stage(phone, Popup{message, &tapped}.body());
    EXPECT_EQ(describe(stage.element(Role::card).frame), "16,56 200x624");
    for (AccessibleElement aim : {stage.element(Role::button), stage.element(Role::close), stage.element(Role::card)}) {
        auto met = stage.view().hitTest(aim);
        ASSERT_TRUE(met.action);
        met.action();
    }
    EXPECT_EQ(tapped, "button close card ");
}

TEST(Popup, StandsMirroredAndLargerForThoseWhoReadSo) {
    std::string tapped;
    SceneTraits large = phone;
    large.textScale = 1.5;
    Stage stage(large, Popup{"Tea", &tapped}.body().layoutDirection(LayoutDirection::rightToLeft));
    EXPECT_EQ(frames(stage),
              "card 16,108 200x204\n"
              "title 16,124 200x36\n"
              "message 16,184 200x36\n"
              "button 16,244 200x68\n"
              "close 21,113 44x44\n");
}
