#include "VantixInAppMessage/templates/StarRatingsView.h"

#include "DeclarativeUI/Elements/Stacks.h"
#include "Platform/Values/FatalError.h"

#include <string>

namespace vantix {

View StarRatingsView::body() const {
    if (maximumRating < 1) fatalError("Range requires lowerBound <= upperBound");
    std::vector<View> stars;
    for (int number = 1; number <= maximumRating; ++number) stars.push_back(star(number));
    return HStack(std::move(stars));
}

View StarRatingsView::star(int number) const {
    bool isOff = number > rating.get();
    auto name = std::to_string(number);
    return SymbolImage(image(number))
        .foregroundColor(isOff ? offColor.value_or(Color::gray()) : onColor.value_or(Color::yellow()))
        .selected(!isOff)
        .spokenText(name + " of " + std::to_string(maximumRating) + " stars, " + (isOff ? "not selected" : "selected"))
        .element(Role::star, name)
        .onTapGesture([rating = rating, number] { rating.set(number); });
}

Image StarRatingsView::image(int number) const { return number > rating.get() ? offImage.value_or(onImage) : onImage; }

}  // namespace vantix
