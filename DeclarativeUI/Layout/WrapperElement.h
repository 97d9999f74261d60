#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <memory>
#include <utility>

namespace vantix {

/// An element around one other, for layers that change neither its size nor its place.
class WrapperElement : public Element {
public:
    explicit WrapperElement(ElementPointer content) : content_(std::move(content)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override;
    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override;
    Rect touchArea(const Rect& frame, const Environment& environment) const override {
        return content_->touchArea(frame, environment);
    }
    const Element* touchedElement() const override { return content_->touchedElement(); }
    const Element* wrapped() const override { return content_.get(); }

protected:
    const ElementPointer& content() const { return content_; }

private:
    ElementPointer content_;
};

/// A view of the element; an empty view when the content that it would wrap is empty.
template <typename Modifier, typename... Arguments>
ElementPointer modified(const ElementPointer& content, Arguments&&... arguments) {
    if (!content) return {};
    return ElementPointer(std::make_shared<const Modifier>(content, std::forward<Arguments>(arguments)...));
}

}  // namespace vantix
