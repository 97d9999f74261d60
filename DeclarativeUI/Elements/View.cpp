#include "DeclarativeUI/View.h"

#include "DeclarativeUI/Elements/Decoration.h"
#include "DeclarativeUI/Elements/Frame.h"
#include "DeclarativeUI/Elements/Inherited.h"
#include "DeclarativeUI/Elements/LayoutObserver.h"
#include "DeclarativeUI/Elements/Padding.h"
#include "DeclarativeUI/Elements/SafeArea.h"
#include "DeclarativeUI/Elements/Semantics.h"
#include "DeclarativeUI/Elements/TapGesture.h"

namespace vantix {

View View::padding(double amount) const { return padding(Edge::all, amount); }

View View::padding(Edge edges, double amount) const {
    auto along = [&](Edge edge) { return includes(edges, edge) ? amount : 0; };
    return padded(element_, {along(Edge::top), along(Edge::leading), along(Edge::bottom), along(Edge::trailing)}, true);
}

View View::padding(const EdgeInsets& insets) const { return padded(element_, insets, false); }

View View::frame(const FrameSpec& spec) const { return framed(element_, spec); }

View View::background(std::optional<Color> color) const { return withBackground(element_, color); }

View View::standsOn(std::optional<Color> color) const {
    if (!color) return *this;
    return standingOn(element_, *color);
}

View View::cornerRadius(double radius) const { return withCornerRadius(element_, radius); }

View View::overlay(Alignment alignment, const View& content) const { return withOverlay(element_, alignment, content); }

View View::font(const Font& font) const {
    return inherited(element_, [font](Environment& inner) { inner.font = font; });
}

View View::foregroundColor(std::optional<Color> color) const {
    if (!color) return *this;
    return inherited(element_, [color](Environment& inner) { inner.foregroundColor = color; });
}

View View::multilineTextAlignment(TextAlignment alignment) const {
    return inherited(element_, [alignment](Environment& inner) { inner.textAlignment = alignment; });
}

View View::layoutDirection(LayoutDirection direction) const {
    return inherited(element_, [direction](Environment& inner) { inner.layoutDirection = direction; });
}

View View::onTapGesture(std::function<void()> action) const { return tappable(element_, std::move(action)); }

View View::ignoresSafeArea(Edge edges) const { return ignoringSafeArea(element_, edges); }

View View::onLayout(std::string key, std::function<void(Size)> action) const {
    return observed(element_, std::move(key), std::move(action));
}

View View::element(Role role, std::string label) const { return asElement(element_, role, std::move(label)); }

View View::selected(bool isSelected) const {
    return described(element_, [isSelected](AccessibleElement& element) { element.selected = isSelected; });
}

View View::accessibleKind(AccessibleKind kind) const {
    return described(element_, [kind](AccessibleElement& element) { element.kind = kind; });
}

View View::accessibleName(std::string name) const {
    return described(element_, [name = std::move(name)](AccessibleElement& element) { element.name = name; });
}

View View::actsOnTap(bool acts) const {
    return described(element_, [acts](AccessibleElement& element) { element.isEnabled = acts; });
}

View View::adjustable(Progress value, std::function<void(int)> adjust) const {
    return described(vantix::adjustable(element_, std::move(adjust)), [value](AccessibleElement& element) {
        element.kind = AccessibleKind::adjustable;
        element.progress = value;
    });
}

View View::language(std::optional<std::string> code) const {
    if (!code) return *this;
    return inLanguage(element_, std::move(*code));
}

View View::passesTouchesOutsideCard() const { return passingTouchesOutsideCard(element_); }

}  // namespace vantix
