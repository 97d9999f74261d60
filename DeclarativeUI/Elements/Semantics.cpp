#include "DeclarativeUI/Elements/Semantics.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

/// Makes what it wraps an element that tools list and assistive technology speaks.
class SemanticElement final : public WrapperElement {
public:
    SemanticElement(const ElementPointer& content, Role role, std::string label)
        : WrapperElement(content), role_(role), label_(std::move(label)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.elements().begin(*this, role_, label_, frame);
        WrapperElement::place(frame, proposal, environment, pass);
        pass.elements().end();
    }
    const Element* touchedElement() const override { return this; }

private:
    Role role_;
    std::string label_;
};

class SelectedElement final : public WrapperElement {
public:
    SelectedElement(const ElementPointer& content, bool isSelected)
        : WrapperElement(content), isSelected_(isSelected) {}

    void describe(AccessibleElement& element) const override { element.selected = isSelected_; }

private:
    bool isSelected_;
};

class SpokenTextElement final : public WrapperElement {
public:
    SpokenTextElement(const ElementPointer& content, std::string text)
        : WrapperElement(content), text_(std::move(text)) {}

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

ElementPointer asElement(const ElementPointer& content, Role role, std::string label) {
    return modified<SemanticElement>(content, role, std::move(label));
}

ElementPointer asSelected(const ElementPointer& content, bool isSelected) {
    return modified<SelectedElement>(content, isSelected);
}

ElementPointer spokenAs(const ElementPointer& content, std::string text) {
    return modified<SpokenTextElement>(content, std::move(text));
}

ElementPointer passingTouchesOutsideCard(const ElementPointer& content) {
    return modified<PassThroughElement>(content);
}

}  // namespace vantix
