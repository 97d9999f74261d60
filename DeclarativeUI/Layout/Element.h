#pragma once

#include "DeclarativeUI/View.h"
#include "Platform/Values/Geometry.h"

#include <optional>
#include <vector>

namespace vantix {

class ButtonElement;
class LayoutPass;
class SemanticElement;

enum class Axis { horizontal, vertical };

/// A length with which layout can count: no longer than any screen, 0 for what is no number.
double bounded(double length);
EdgeInsets bounded(const EdgeInsets& insets);
/// The same, and no size is less than nothing.
Size bounded(Size size);

/// What an ancestor offers; an absent length leaves that axis open.
struct Proposal {
    std::optional<double> width;
    std::optional<double> height;

    bool operator==(const Proposal&) const = default;

    static Proposal of(Size size) { return {size.width, size.height}; }
};

/// What is inherited from ancestors.
struct Environment {
    Font font;
    std::optional<Color> foregroundColor;
    TextAlignment textAlignment = TextAlignment::leading;
    LayoutDirection layoutDirection = LayoutDirection::leftToRight;
    /// The axis of the innermost stack, along which spacers stretch and across which dividers run.
    Axis stackAxis = Axis::vertical;

    bool isRightToLeft() const { return layoutDirection == LayoutDirection::rightToLeft; }
};

/// A node of the interface tree. Immutable; layout asks for a size and then gives a frame.
class Element {
public:
    virtual ~Element() = default;

    /// The size that the element answers to a proposal. Called through LayoutPass::measure, which remembers the answer.
    virtual Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const = 0;
    /// Draws the element into its frame, whose size is its answer to the proposal. Called through LayoutPass::place.
    virtual void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
                       LayoutPass& pass) const = 0;

    /// Whether a stack serves the element after all others, with what they left.
    virtual bool takesWhatIsLeft() const { return false; }
    /// The part of the element's frame that a touch means: without its outer padding.
    virtual Rect touchArea(const Rect& frame, const Environment&) const { return frame; }
    /// The element that a touch there meets; null when this view alone makes none.
    virtual const SemanticElement* touchedElement() const { return nullptr; }
    /// The element that this one wraps without changing what it is; null for content and for paddings.
    virtual const Element* wrapped() const { return nullptr; }
    /// What this layer alone contributes to the element it belongs to.
    virtual void describe(AccessibleElement&) const {}

    virtual const ButtonElement* asButton() const { return nullptr; }
};

/// An element around one other, for layers that change neither its size nor its place.
class WrapperElement : public Element {
public:
    explicit WrapperElement(View content) : content_(std::move(content)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override;
    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override;
    Rect touchArea(const Rect& frame, const Environment& environment) const override {
        return content_.element()->touchArea(frame, environment);
    }
    const SemanticElement* touchedElement() const override { return content_.element()->touchedElement(); }
    const Element* wrapped() const override { return content_.element().get(); }

protected:
    const View& content() const { return content_; }

private:
    View content_;
};

/// A view of the element; an empty view when the content that it would wrap is empty.
template <typename Modifier, typename... Arguments>
View modified(const View& content, Arguments&&... arguments) {
    if (content.isEmpty()) return {};
    return View(std::make_shared<const Modifier>(content, std::forward<Arguments>(arguments)...));
}

}  // namespace vantix
