#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>
#include <optional>

namespace vantix {

/// A control. Its touch area, and the element that it is, reach to the outermost layer around it that is no padding;
/// see LayoutPass::place.
class ButtonElement final : public WrapperElement {
public:
    ButtonElement(View label, std::function<void()> action, std::optional<Role> role)
        : WrapperElement(std::move(label)), action_(std::move(action)), role_(role) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override;
    const ButtonElement* asButton() const override { return this; }
    const SemanticElement* touchedElement() const override { return nullptr; }
    const Element* wrapped() const override { return nullptr; }
    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }

    const std::function<void()>& action() const { return action_; }
    /// Absent for controls that name their own.
    std::optional<Role> role() const { return role_; }

private:
    std::function<void()> action_;
    std::optional<Role> role_;
};

}  // namespace vantix
