#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/LayoutTerms.h"
#include "Platform/Values/Color.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vantix {

class Element;

/// A piece of interface as a value: cheap to copy, immutable, shared underneath.
///
/// Modifiers return a new view that wraps this one, so their order matters: `text.padding().background(red)` paints
/// behind the padding, `text.background(red).padding()` does not. A default-constructed view is empty: it draws
/// nothing, takes no room, and containers leave it out together with its gap. A modifier of an empty view is an empty
/// view.
class VANTIX_EXPORT View {
public:
    View() = default;
    View(std::shared_ptr<const Element> element) : element_(std::move(element)) {}

    bool isEmpty() const { return !element_; }
    /// For layout, which knows elements alone; null when the view is empty.
    operator const std::shared_ptr<const Element>&() const { return element_; }

    View padding(double amount = standardPadding) const;
    View padding(Edge edges, double amount = standardPadding) const;
    View padding(const EdgeInsets& insets) const;
    View frame(const FrameSpec& spec) const;
    /// An absent or clear colour leaves the background clear. Runs under safe areas that the view ignores.
    View background(std::optional<Color> color) const;
    /// Tells what others paint behind, for the colours that are left open. Otherwise that is taken for white.
    View standsOn(std::optional<Color> color) const;
    View cornerRadius(double radius) const;
    /// Lays `content` over this view, aligned within this view's frame, without changing its size.
    View overlay(Alignment alignment, const View& content) const;

    /// Font and text colour are inherited by the texts and symbols inside, the innermost one wins.
    View font(const Font& font) const;
    /// Without it texts and symbols are black or white, and buttons a blue, whichever can be read on the backgrounds
    /// around them.
    View foregroundColor(std::optional<Color> color) const;
    View multilineTextAlignment(TextAlignment alignment) const;

    /// Mirrors leading and trailing for everything inside.
    View layoutDirection(LayoutDirection direction) const;

    /// Touches anywhere in this view's frame (its padding excluded), unless something inside wants them.
    View onTapGesture(std::function<void()> action) const;
    View ignoresSafeArea(Edge edges) const;
    /// Calls `action` after a layout that gave this view another size than the layout before, also before the first
    /// redraw. The `key` tells it from others of the same hosted root.
    View onLayout(std::string key, std::function<void(Size)> action) const;

    /// Makes the view an element that tools list and assistive technology speaks; see AccessibleElement. Frame,
    /// background, corner radius, font and text colour are taken from what the view paints at this point of the chain;
    /// without a label, the texts inside are the label.
    View element(Role role, std::string label = {}) const;
    // Of the element that the view is going to be (set before `element`).

    /// The state of a view that can be selected.
    View selected(bool isSelected) const;
    /// What assistive technology takes it for, instead of what is usual for its role.
    View accessibleKind(AccessibleKind kind) const;
    /// What assistive technology calls it instead of its label; empty: nothing but its kind.
    View accessibleName(std::string name) const;
    /// Whether a tap does anything at present. Without this, whatever takes taps is announced as a control.
    View actsOnTap(bool acts) const;
    /// Makes it one control with a value that assistive technology increases and decreases by steps.
    View adjustable(Progress value, std::function<void(int steps)> adjust) const;

    /// The language of the texts in this tree, by two-letter code; absent: unknown.
    View language(std::optional<std::string> code) const;
    /// Leaves touches outside this tree's card to the application below.
    View passesTouchesOutsideCard() const;

private:
    std::shared_ptr<const Element> element_;
};

}  // namespace vantix
