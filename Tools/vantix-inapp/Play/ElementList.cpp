#include "Tools/vantix-inapp/Play/ElementList.h"

#include "Tools/vantix-inapp/Play/LineWriter.h"

#include <string>

namespace vantix {

namespace {

Value points(double length) { return roundedNumber(length, 2); }

List frame(const Rect& rect) {
    return {points(rect.origin.x), points(rect.origin.y), points(rect.size.width), points(rect.size.height)};
}

bool isVisible(const std::optional<Color>& color) { return color && color->alpha > 0; }

Dictionary fontDescription(const Font& font) {
    return {{"name", font.name.empty() ? "system" : font.name},
            {"size", points(font.size)},
            {"weight", font.weight == FontWeight::bold ? "bold" : "regular"},
            {"italic", font.italic}};
}

Dictionary description(const AccessibleElement& element) {
    Dictionary described{{"role", roleName(element.role)}};
    if (!element.label.empty()) described.set("label", element.label);
    described.set("index", element.index);
    described.set("frame", frame(element.frame));
    if (element.textColor) described.set("textColor", element.textColor->hexStringWithAlpha());
    if (isVisible(element.background)) described.set("background", element.background->hexStringWithAlpha());
    if (element.font) described.set("font", fontDescription(*element.font));
    if (element.cornerRadius) described.set("cornerRadius", points(*element.cornerRadius));
    if (element.selected) described.set("selected", *element.selected);
    if (!element.spokenText.empty()) described.set("spoken", element.spokenText);
    return described;
}

Dictionary backdrop(const WindowDescription& window) {
    return {{"role", "backdrop"},
            {"index", 0},
            {"frame", frame(window.frame)},
            {"background", window.backgroundColor->hexStringWithAlpha()}};
}

}  // namespace

List elementList(const OffscreenScene::ShownWindow& window) {
    List list;
    if (isVisible(window.description.backgroundColor)) list.push_back(backdrop(window.description));
    for (const AccessibleElement& element : window.content->elements()) {
        if (!isGroup(element.role)) list.push_back(description(element));
    }
    return list;
}

}  // namespace vantix
