#pragma once

#include "VantixInAppMessage/templates/StarRatingsView.h"
#include "fuzz/Choices.h"
#include "tests/DeclarativeUI/Stage.h"

#include <array>

namespace vantix::fuzz {

/// Builds a tree of every kind of element under every kind of modifier, as the input chooses. Whatever in it takes taps
/// calls `acted`.
struct RandomTree {
    Choices& choices;
    std::function<void()> acted;

    View tree(int depth = 6) {
        View view = depth > 0 && choices.below(3) > 0 ? container(depth) : leaf();
        for (int count = choices.below(4); count > 0; --count) view = modified(view);
        return view;
    }

private:
    using Kind = std::function<View()>;
    struct Source final : ImageSource {
        explicit Source(Image shown) : image(std::move(shown)) {}
        Image currentImage() const override { return image; }
        void needed(int, int) override {}
        Image image;
    };

    double length() { return choices.anyLength(); }
    std::optional<double> perhaps() { return choices.flag() ? std::optional(length()) : std::nullopt; }
    Edge edges() { return static_cast<Edge>(choices.below(16)); }
    Alignment alignment() { return {choices.word<HorizontalAlignment>(3), choices.word<VerticalAlignment>(3)}; }
    Image picture() {
        Image image = bitmapImage(1, 1, {0});
        image.naturalSize = {length(), length()};
        return image;
    }
    /// Dividers alone are dividers.
    Role role() {
        auto role = choices.word<Role>(static_cast<int>(std::size(roleWords.entries)));
        return role == Role::divider ? Role::mark : role;
    }

    View leaf() {
        return choices.of(std::to_array<Kind>({
            [&] { return ColorRectangle(choices.color()); },
            [&] { return FilledCircle(choices.color()); },
            [&] { return StrokedCircle(choices.color(), length()); },
            [&] { return Divider(); },
            [&] { return Spacer(length()); },
            [&] { return SymbolImage("star.fill"); },
            [&] { return ResizableImage(picture()); },
            [&] { return SourcedImage(std::make_shared<Source>(picture()), perhaps(), length()); },
            [&] {
                return StarRatingsView{State<int>(choices.below(7)), choices.below(7)}.body();
            },
            [&] { return Text(choices.text()); },
        }))();
    }

    View container(int depth) {
        std::vector<View> children;
        for (int count = choices.below(5); count >= 0; --count) children.push_back(tree(depth - 1));
        const View& first = children.front();
        return choices.of(std::to_array<Kind>({
            [&] { return VStack(choices.word<HorizontalAlignment>(3), length(), children); },
            [&] { return HStack(choices.word<VerticalAlignment>(3), length(), children); },
            [&] { return ZStack(alignment(), children); },
            [&] { return ScrollView(first); },
            [&] { return GeometryReader([first](auto& at) { return first.frame({.width = at.windowSize().width}); }); },
            [&] { return Button(acted, first); },
            [&] { return first.overlay(alignment(), children.back()); },
        }))();
    }

    View modified(const View& view) {
        return choices.of(std::to_array<Kind>({
            [&] { return view.padding(edges(), length()); },
            [&] {
                return view.frame({perhaps(), perhaps(), perhaps(), perhaps(), perhaps(), alignment()});
            },
            [&] { return view.background(choices.color()).standsOn(choices.color()); },
            [&] { return view.cornerRadius(length()); },
            [&] { return view.font(Font::system(length())).foregroundColor(choices.color()); },
            [&] { return view.multilineTextAlignment(choices.word<TextAlignment>(3)); },
            [&] { return view.layoutDirection(choices.word<LayoutDirection>(2)); },
            [&] { return view.onTapGesture(acted); },
            [&] { return view.ignoresSafeArea(edges()); },
            [&] { return view.onLayout(choices.text(), [](Size) {}); },
            [&] { return view.element(role(), choices.text()); },
            [&] { return view.selected(choices.flag()).accessibleName(choices.text()).actsOnTap(choices.flag()); },
            [&] {
                return view.adjustable({choices.byte(), choices.byte()}, [act = acted](int) { act(); });
            },
            [&] { return view.passesTouchesOutsideCard().language(choices.text()); },
            [&] { return PlainButton(acted, view); },
        }))();
    }
};

}  // namespace vantix::fuzz
