#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <optional>
#include <string>

namespace vantix {

/// Makes what it wraps an element that tools list and assistive technology speaks.
class SemanticElement final : public WrapperElement {
public:
    SemanticElement(View content, Role role, std::optional<std::string> label);

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override;
    const SemanticElement* touchedElement() const override { return this; }

    Role role() const { return role_; }

private:
    Role role_;
    std::optional<std::string> label_;
};

/// The element that a view with this outermost layer is: role, label and frame, and what the layers below contribute.
AccessibleElement describedElement(const Element& outermost, Role role, const std::optional<std::string>& label,
                                   const Rect& frame);

/// The button on the way from the outermost layer to the content; null when there is none.
const ButtonElement* buttonIn(const Element& outermost);
/// Whether the layer lies on that way.
bool isLayerOf(const Element& outermost, const Element& layer);

/// Whether elements of this role hold others, and are no text or picture themselves.
bool isContainer(Role role);

}  // namespace vantix
