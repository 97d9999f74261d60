#include "DeclarativeUI/Elements/Semantics.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

namespace {

class SelectedElement final : public WrapperElement {
public:
    SelectedElement(const View& content, bool isSelected) : WrapperElement(content), isSelected_(isSelected) {}

    void describe(AccessibleElement& element) const override { element.selected = isSelected_; }

private:
    bool isSelected_;
};

class SpokenTextElement final : public WrapperElement {
public:
    SpokenTextElement(const View& content, std::string text) : WrapperElement(content), text_(std::move(text)) {}

    void describe(AccessibleElement& element) const override { element.spokenText = text_; }

private:
    std::string text_;
};

class PassThroughElement final : public WrapperElement {
public:
    using WrapperElement::WrapperElement;

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.passTouchesOutsideCard();
        WrapperElement::place(frame, proposal, environment, pass);
    }
};

}  // namespace

bool isContainer(Role role) { return role == Role::card || role == Role::row; }

const ButtonElement* buttonIn(const Element& outermost) {
    for (const Element* layer = &outermost; layer; layer = layer->wrapped()) {
        if (auto button = layer->asButton()) return button;
    }
    return nullptr;
}

bool isLayerOf(const Element& outermost, const Element& layer) {
    const Element* at = &outermost;
    while (at && at != &layer) at = at->wrapped();
    return at != nullptr;
}

AccessibleElement describedElement(const Element& outermost, Role role, const std::optional<std::string>& label,
                                   const Rect& frame) {
    AccessibleElement element;
    element.role = role;
    element.label = label.value_or("");
    element.frame = frame;
    for (const Element* layer = &outermost; layer; layer = layer->wrapped()) layer->describe(element);
    return element;
}

SemanticElement::SemanticElement(View content, Role role, std::optional<std::string> label)
    : WrapperElement(std::move(content)), role_(role), label_(std::move(label)) {}

void SemanticElement::place(const Rect& frame, const Proposal& proposal, const Environment& environment,
                            LayoutPass& pass) const {
    pass.beginElement(*this, describedElement(*this, role_, label_, frame));
    WrapperElement::place(frame, proposal, environment, pass);
    pass.endElement();
}

View View::element(Role role) const { return modified<SemanticElement>(*this, role, std::nullopt); }

View View::element(Role role, std::string label) const {
    return modified<SemanticElement>(*this, role, std::optional(std::move(label)));
}

View View::selected(bool isSelected) const { return modified<SelectedElement>(*this, isSelected); }

View View::spokenText(std::string text) const { return modified<SpokenTextElement>(*this, std::move(text)); }

View View::passesTouchesOutsideCard() const { return modified<PassThroughElement>(*this); }

}  // namespace vantix
