#include "VantixInAppMessage/templates/StarRatingsView.h"

#include "DeclarativeUI/Elements/Shapes.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "Platform/Values/FatalError.h"

#include <algorithm>
#include <string>

namespace vantix {

View StarRatingsView::body() const {
    if (maximumRating < 1) fatalError("Range requires lowerBound <= upperBound");
    std::vector<View> stars;
    for (int number = 1; number <= maximumRating; ++number) stars.push_back(star(number));
    constexpr double noSpacing = 0;
    return HStack(VerticalAlignment::center, noSpacing, std::move(stars))
        .adjustable({rating.get(), maximumRating}, [self = *this](int steps) { self.adjust(steps); })
        .element(Role::stars);
}

/// As with taps, there is no way back to no star at all.
void StarRatingsView::adjust(int steps) const {
    int fewest = std::min(rating.get(), 1);
    rating.set(std::clamp(rating.get() + std::clamp(steps, -maximumRating, maximumRating), fewest, maximumRating));
}

View StarRatingsView::star(int number) const {
    View room = ColorRectangle(Color::clear()).frame({.height = touchSize, .maxWidth = touchSize});
    return ZStack(Alignment::center(), {room, picture(number)})
        .selected(number <= rating.get())
        .element(Role::star, std::to_string(number))
        .onTapGesture([rating = rating, number] { rating.set(number); });
}

View StarRatingsView::picture(int number) const {
    constexpr double fontSize = 24;
    constexpr double besideThePicture = 4;
    bool isOff = number > rating.get();
    return SymbolImage(image(number))
        .font(Font::system(fontSize))
        .foregroundColor(isOff ? offColor.value_or(Color::gray()) : onColor.value_or(Color::yellow()))
        .padding(Edge::horizontal, besideThePicture);
}

Image StarRatingsView::image(int number) const { return number > rating.get() ? offImage.value_or(onImage) : onImage; }

}  // namespace vantix
