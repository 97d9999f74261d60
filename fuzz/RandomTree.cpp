#include "fuzz/RandomTree.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Divider.h"
#include "DeclarativeUI/Elements/GeometryReader.h"
#include "DeclarativeUI/Elements/ResizableImage.h"
#include "DeclarativeUI/Elements/ScrollView.h"
#include "DeclarativeUI/Elements/Shapes.h"
#include "DeclarativeUI/Elements/SourcedImage.h"
#include "DeclarativeUI/Elements/Spacer.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "DeclarativeUI/Elements/SymbolImage.h"
#include "DeclarativeUI/Elements/Text.h"
#include "VantixInAppMessage/templates/StarRatingsView.h"

#include <iterator>
#include <vector>

namespace vantix::fuzz {

namespace {

struct Source final : ImageSource {
    explicit Source(Image shown) : image(std::move(shown)) {}
    Image currentImage() const override { return image; }
    void needed(int, int) override {}
    Image image;
};

Image picture(Choices& choices) {
    Image image = bitmapImage(1, 1, {0});
    image.naturalSize = {choices.anyLength(), choices.anyLength()};
    return image;
}

Alignment alignment(Choices& choices) {
    return {static_cast<HorizontalAlignment>(choices.below(3)), static_cast<VerticalAlignment>(choices.below(3))};
}

std::optional<double> perhaps(Choices& choices) {
    return choices.flag() ? std::optional(choices.anyLength()) : std::nullopt;
}

Edge edges(Choices& choices) { return static_cast<Edge>(choices.below(16)); }

/// Dividers alone are dividers.
Role role(Choices& choices) {
    auto role = static_cast<Role>(choices.below(static_cast<int>(std::size(roleWords.entries))));
    return role == Role::divider ? Role::mark : role;
}

View leaf(Choices& choices) {
    switch (choices.below(10)) {
        case 0:
            return ColorRectangle(choices.color());
        case 1:
            return FilledCircle(choices.color());
        case 2:
            return StrokedCircle(choices.color(), choices.anyLength());
        case 3:
            return Divider();
        case 4:
            return Spacer(choices.anyLength());
        case 5:
            return SymbolImage("star.fill");
        case 6:
            return ResizableImage(picture(choices));
        case 7:
            return SourcedImage(std::make_shared<Source>(picture(choices)), perhaps(choices), choices.anyLength());
        case 8:
            return StarRatingsView{.rating = State<int>(choices.below(7)), .maximumRating = choices.below(7)}.body();
        default:
            return Text(choices.text());
    }
}

View container(Choices& choices, const std::function<void()>& acted, int depth) {
    auto kind = choices.below(8);
    auto aligned = alignment(choices);
    double spacing = choices.anyLength();
    std::vector<View> children;
    for (int count = choices.below(5); count >= 0; --count) children.push_back(randomTree(choices, acted, depth - 1));
    switch (kind) {
        case 0:
            return HStack(aligned.vertical, spacing, children);
        case 1:
            return ZStack(aligned, children);
        case 2:
            return ScrollView(children.front());
        case 3:
            return GeometryReader([first = children.front()](const GeometryProxy& proxy) {
                return first.frame({.width = proxy.size.width, .height = proxy.windowSize().height});
            });
        case 4:
            return Button(acted, children.front());
        case 5:
            return children.front().overlay(aligned, children.back());
        default:
            return VStack(aligned.horizontal, spacing, children);
    }
}

View modified(View view, Choices& choices, const std::function<void()>& acted) {
    switch (choices.below(18)) {
        case 0:
            return view.padding(edges(choices), choices.anyLength());
        case 1:
            return view.frame({perhaps(choices), perhaps(choices), perhaps(choices), perhaps(choices), perhaps(choices),
                               alignment(choices)});
        case 2:
            return view.background(choices.color());
        case 3:
            return view.standsOn(choices.color());
        case 4:
            return view.cornerRadius(choices.anyLength());
        case 5:
            return view.font({"", choices.anyLength(), FontWeight::bold, choices.flag()});
        case 6:
            return view.foregroundColor(choices.color());
        case 7:
            return view.multilineTextAlignment(static_cast<TextAlignment>(choices.below(3)));
        case 8:
            return view.layoutDirection(static_cast<LayoutDirection>(choices.below(2)));
        case 9:
            return view.onTapGesture(acted);
        case 10:
            return view.ignoresSafeArea(edges(choices));
        case 11:
            return view.onLayout(choices.text(), [](Size) {});
        case 12:
            return view.element(role(choices), choices.text());
        case 13:
            return view.selected(choices.flag()).accessibleName(choices.text()).actsOnTap(choices.flag());
        case 14:
            return view.adjustable({choices.byte(), choices.byte()}, [acted](int) { acted(); });
        case 15:
            return view.passesTouchesOutsideCard().language(choices.text());
        case 16:
            return PlainButton(acted, view);
        default:
            return view;
    }
}

}  // namespace

View randomTree(Choices& choices, const std::function<void()>& acted, int depth) {
    View view = depth > 0 && choices.below(3) > 0 ? container(choices, acted, depth) : leaf(choices);
    for (int count = choices.below(4); count > 0; --count) view = modified(view, choices, acted);
    return view;
}

}  // namespace vantix::fuzz
