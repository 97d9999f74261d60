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

/// Adds to the element that is made of the view.
class DescribedElement final : public WrapperElement {
public:
    DescribedElement(const ElementPointer& content, std::function<void(AccessibleElement&)> description)
        : WrapperElement(content), description_(std::move(description)) {}

    void describe(AccessibleElement& element) const override { description_(element); }

private:
    std::function<void(AccessibleElement&)> description_;
};

class AdjustableElement final : public WrapperElement {
public:
    AdjustableElement(const ElementPointer& content, std::function<void(int)> adjust)
        : WrapperElement(content), adjust_(std::move(adjust)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.elements().addAdjustment(adjust_);
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::function<void(int)> adjust_;
};

class LanguageElement final : public WrapperElement {
public:
    LanguageElement(const ElementPointer& content, std::string language)
        : WrapperElement(content), language_(std::move(language)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.setLanguage(language_);
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::string language_;
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

ElementPointer described(const ElementPointer& content, std::function<void(AccessibleElement&)> description) {
    return modified<DescribedElement>(content, std::move(description));
}

ElementPointer adjustable(const ElementPointer& content, std::function<void(int)> adjust) {
    return modified<AdjustableElement>(content, std::move(adjust));
}

ElementPointer inLanguage(const ElementPointer& content, std::string language) {
    return modified<LanguageElement>(content, std::move(language));
}

ElementPointer passingTouchesOutsideCard(const ElementPointer& content) {
    return modified<PassThroughElement>(content);
}

}  // namespace vantix
