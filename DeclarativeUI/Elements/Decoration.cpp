#include "DeclarativeUI/Elements/Decoration.h"

#include "DeclarativeUI/Elements/Inherited.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

class BackgroundElement final : public WrapperElement {
public:
    BackgroundElement(const ElementPointer& content, std::optional<Color> color)
        : WrapperElement(content), color_(color) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        if (isPainted() && pass.clips().isVisible(frame))
            pass.draw(FillRect{frame, pass.clips().cornerRadiusOf(frame), *color_});
        WrapperElement::place(frame, proposal, environment, pass);
    }

    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }
    void describe(AccessibleElement& element) const override {
        if (isPainted() && !element.background) element.background = color_;
    }

private:
    bool isPainted() const { return color_ && color_->alpha > 0; }

    std::optional<Color> color_;
};

class CornerRadiusElement final : public WrapperElement {
public:
    CornerRadiusElement(const ElementPointer& content, double radius) : WrapperElement(content), radius_(radius) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.pushClip(frame, radius_);
        WrapperElement::place(frame, proposal, environment, pass);
        pass.popClip();
    }

    void describe(AccessibleElement& element) const override {
        bool roundsWhatIsPainted = !element.background;
        if (roundsWhatIsPainted && !element.cornerRadius) element.cornerRadius = radius_;
    }

private:
    double radius_;
};

class OverlayElement final : public WrapperElement {
public:
    OverlayElement(const ElementPointer& content, Alignment alignment, ElementPointer overlay)
        : WrapperElement(content), alignment_(alignment), overlay_(std::move(overlay)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        WrapperElement::place(frame, proposal, environment, pass);
        placeAligned(overlay_, frame, Proposal::of(frame.size), alignment_, environment, pass);
    }
    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }
    const Element* wrapped() const override { return nullptr; }

private:
    Alignment alignment_;
    ElementPointer overlay_;
};

}  // namespace

ElementPointer withBackground(const ElementPointer& content, std::optional<Color> color) {
    return modified<BackgroundElement>(color ? standingOn(content, *color) : content, color);
}

ElementPointer withCornerRadius(const ElementPointer& content, double radius) {
    return modified<CornerRadiusElement>(content, radius);
}

ElementPointer withOverlay(const ElementPointer& content, Alignment alignment, const ElementPointer& overlay) {
    return modified<OverlayElement>(content, alignment, overlay);
}

}  // namespace vantix
