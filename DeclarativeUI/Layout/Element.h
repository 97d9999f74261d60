#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/LayoutTerms.h"
#include "Platform/Values/Color.h"
#include "Platform/Values/Contrast.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"

#include <functional>
#include <memory>
#include <optional>

namespace vantix {

class LayoutPass;

enum class Axis { horizontal, vertical };

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
    /// What is painted behind, as far as the tree knows. Opaque.
    Color backdrop = Color::white();
    TextAlignment textAlignment = TextAlignment::leading;
    LayoutDirection layoutDirection = LayoutDirection::leftToRight;
    /// The axis of the innermost stack, along which spacers stretch and across which dividers run.
    Axis stackAxis = Axis::vertical;

    /// The colour of texts and symbols.
    Color drawnColor() const { return foregroundColor.value_or(readableColor(backdrop)); }
    bool isRightToLeft() const { return layoutDirection == LayoutDirection::rightToLeft; }
};

/// What a control is and does.
struct Control {
    std::function<void()> action;
    /// The element that it makes with the layers around it; absent for controls that name their own.
    std::optional<Role> role;
};

class Element;

/// A piece of the tree; null draws nothing and takes no room.
using ElementPointer = std::shared_ptr<const Element>;

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
    /// The layer that makes the element that a touch there meets; null when this view alone makes none.
    virtual const Element* touchedElement() const { return nullptr; }
    /// The element that this one wraps without changing what it is; null for content and for paddings.
    virtual const Element* wrapped() const { return nullptr; }
    /// What this layer alone contributes to the element it belongs to.
    virtual void describe(AccessibleElement&) const {}
    /// The control that this layer alone is; null for all others.
    virtual const Control* control() const { return nullptr; }
};

}  // namespace vantix
