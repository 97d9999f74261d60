#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessageStyle.h"
#include "fuzz/FuzzTarget.h"

#include <cmath>

using namespace vantix;

namespace {

/// The component with its size as a push has it: a text.
Dictionary asPushed(const InAppMessageComponentStyle& component) {
    Dictionary dictionary = component.getJSON();
    constexpr double largestExact = 9007199254740992.0;
    auto size = std::abs(component.textSize) < largestExact ? static_cast<std::int64_t>(component.textSize) : 16;
    dictionary.set("textSize", std::to_string(size));
    return dictionary;
}

/// Written colours are opaque.
bool isSame(const std::optional<Color>& a, const std::optional<Color>& b) {
    return a.has_value() == b.has_value() && (!a || a->hexString() == b->hexString());
}

bool isSame(const InAppMessageComponentStyle& a, const InAppMessageComponentStyle& b) {
    return isSame(a.textColor, b.textColor) && isSame(a.backgroundColor, b.backgroundColor) &&
           a.textSize == b.textSize && a.getFont() == b.getFont();
}

}  // namespace

/// The text under "template".
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    auto style = InAppMessageStyle::generate(std::string(fuzz::textOf(data, size)));
    fuzz::expectComesBack(style.description());
    fuzz::expectComesBack(style.getJSON());

    Dictionary dictionary = style.getJSON();
    dictionary.set("title", asPushed(style.title));
    dictionary.set("message", asPushed(style.message));
    List ctas;
    for (const auto& cta : style.ctas) ctas.emplace_back(asPushed(cta));
    dictionary.set("ctas", ctas);
    auto again = InAppMessageStyle::generate(toJSON(dictionary));
    fuzz::expect(isSame(again.rating.selectedColor, style.rating.selectedColor) &&
                     isSame(again.rating.unselectedColor, style.rating.unselectedColor) &&
                     isSame(again.phoneBackgroundColor, style.phoneBackgroundColor) &&
                     isSame(again.layoutBackgroundColor, style.layoutBackgroundColor),
                 "colours are read back");
    bool isExact = std::abs(style.title.textSize) < 1e15 && std::abs(style.message.textSize) < 1e15;
    if (isExact) fuzz::expect(isSame(again.title, style.title) && isSame(again.message, style.message), "as are texts");
    fuzz::expect(again.ctas.size() == style.ctas.size(), "as are buttons");
    return 0;
}
