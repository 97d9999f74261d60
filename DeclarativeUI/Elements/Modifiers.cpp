#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"
#include "DeclarativeUI/View.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantix {

Size WrapperElement::measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const {
    return pass.measure(content_, proposal, environment);
}

void WrapperElement::place(const Rect& frame, const Proposal& proposal, const Environment& environment,
                           LayoutPass& pass) const {
    pass.place(content_, frame, proposal, environment);
}

namespace {

class PaddingElement final : public WrapperElement {
public:
    /// `leading` and `trailing` lie left and right where the text runs from left to right.
    PaddingElement(const View& content, EdgeInsets insets, bool mirrors)
        : WrapperElement(content), insets_(insets), mirrors_(mirrors) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size size = pass.measure(content(), inner(proposal), environment);
        return {size.width + insets_.left + insets_.right, size.height + insets_.top + insets_.bottom};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame.inset(resolved(environment)), inner(proposal), environment);
    }

    Rect touchArea(const Rect& frame, const Environment& environment) const override {
        return WrapperElement::touchArea(frame.inset(resolved(environment)), environment);
    }
    const Element* wrapped() const override { return nullptr; }

private:
    Proposal inner(const Proposal& proposal) const {
        auto reduced = [](const std::optional<double>& length, double inset) {
            return length ? std::optional(std::max(0.0, *length - inset)) : std::nullopt;
        };
        return {reduced(proposal.width, insets_.left + insets_.right),
                reduced(proposal.height, insets_.top + insets_.bottom)};
    }

    EdgeInsets resolved(const Environment& environment) const {
        if (!mirrors_ || !environment.isRightToLeft()) return insets_;
        return {insets_.top, insets_.right, insets_.bottom, insets_.left};
    }

    EdgeInsets insets_;
    bool mirrors_;
};

class FrameElement final : public WrapperElement {
public:
    FrameElement(const View& content, const FrameSpec& spec) : WrapperElement(content), spec_(spec) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size size = pass.measure(content(), inner(proposal), environment);
        return {length(spec_.width, 0, spec_.maxWidth, proposal.width, size.width),
                length(spec_.height, minHeight(), spec_.maxHeight, proposal.height, size.height)};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        placeAligned(content(), frame, inner(proposal), spec_.alignment, environment, pass);
    }

    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }

private:
    double minHeight() const { return spec_.minHeight.value_or(0); }

    Proposal inner(const Proposal& proposal) const {
        return {offer(spec_.width, 0, spec_.maxWidth, proposal.width),
                offer(spec_.height, minHeight(), spec_.maxHeight, proposal.height)};
    }

    static std::optional<double> offer(const std::optional<double>& fixed, double minimum,
                                       const std::optional<double>& maximum, const std::optional<double>& proposed) {
        if (fixed) return fixed;
        if (!proposed) return {};
        return std::min(std::max(*proposed, minimum), maximum.value_or(infinity));
    }

    static double length(const std::optional<double>& fixed, double minimum, const std::optional<double>& maximum,
                         const std::optional<double>& proposed, double content) {
        if (fixed) return *fixed;
        double result = content;
        if (maximum && proposed) result = std::max(result, std::min(*proposed, *maximum));
        return std::max(result, minimum);
    }

    FrameSpec spec_;
};

class BackgroundElement final : public WrapperElement {
public:
    BackgroundElement(const View& content, std::optional<Color> color) : WrapperElement(content), color_(color) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        if (isPainted() && pass.isVisible(frame)) pass.draw(FillRect{frame, pass.cornerRadiusOf(frame), *color_});
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
    CornerRadiusElement(const View& content, double radius) : WrapperElement(content), radius_(radius) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.pushClip(frame, radius_);
        WrapperElement::place(frame, proposal, environment, pass);
        pass.popClip();
    }

    void describe(AccessibleElement& element) const override {
        if (!element.cornerRadius) element.cornerRadius = radius_;
    }

private:
    double radius_;
};

class OverlayElement final : public WrapperElement {
public:
    OverlayElement(const View& content, Alignment alignment, View overlay)
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
    View overlay_;
};

class EnvironmentElement final : public WrapperElement {
public:
    EnvironmentElement(const View& content, std::function<void(Environment&)> change)
        : WrapperElement(content), change_(std::move(change)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        return pass.measure(content(), proposal, pass.derive(*this, environment, change_));
    }
    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame, proposal, pass.derive(*this, environment, change_));
    }

private:
    std::function<void(Environment&)> change_;
};

class IgnoresSafeAreaElement final : public WrapperElement {
public:
    IgnoresSafeAreaElement(const View& content, Edge edges) : WrapperElement(content), edges_(edges) {}

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        Rect reached = expanded(frame, environment, pass);
        pass.place(content(), reached, Proposal::of(reached.size), environment);
    }

private:
    /// Reaches to the window's edge where the frame touches that of the safe area.
    Rect expanded(const Rect& frame, const Environment& environment, const LayoutPass& pass) const {
        Rect safe = pass.safeArea();
        Rect window = pass.window();
        auto reaches = [&](Edge edge, double frameEdge, double safeEdge) {
            return includes(edges_, edge) && std::abs(frameEdge - safeEdge) < pass.pixel();
        };
        auto [leftEdge, rightEdge] = environment.isRightToLeft() ? std::pair(Edge::trailing, Edge::leading)
                                                                 : std::pair(Edge::leading, Edge::trailing);
        double left = reaches(leftEdge, frame.minX(), safe.minX()) ? window.minX() : frame.minX();
        double top = reaches(Edge::top, frame.minY(), safe.minY()) ? window.minY() : frame.minY();
        double right = reaches(rightEdge, frame.maxX(), safe.maxX()) ? window.maxX() : frame.maxX();
        double bottom = reaches(Edge::bottom, frame.maxY(), safe.maxY()) ? window.maxY() : frame.maxY();
        return {{left, top}, {right - left, bottom - top}};
    }

    Edge edges_;
};

class LayoutObserverElement final : public WrapperElement {
public:
    LayoutObserverElement(const View& content, std::string key, std::function<void(Size)> action)
        : WrapperElement(content), key_(std::move(key)), action_(std::move(action)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.tellSizeAfterLayout(key_, frame.size, action_);
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::string key_;
    std::function<void(Size)> action_;
};

View inherited(const View& content, std::function<void(Environment&)> change) {
    return modified<EnvironmentElement>(content, std::move(change));
}

}  // namespace

View View::padding(double amount) const { return padding(Edge::all, amount); }

View View::padding(Edge edges, double amount) const {
    auto along = [&](Edge edge) { return includes(edges, edge) ? bounded(amount) : 0; };
    EdgeInsets insets{along(Edge::top), along(Edge::leading), along(Edge::bottom), along(Edge::trailing)};
    return modified<PaddingElement>(*this, insets, true);
}

View View::padding(const EdgeInsets& insets) const { return modified<PaddingElement>(*this, bounded(insets), false); }

View View::frame(const FrameSpec& spec) const { return modified<FrameElement>(*this, spec); }

View View::background(std::optional<Color> color) const { return modified<BackgroundElement>(*this, color); }

View View::cornerRadius(double radius) const { return modified<CornerRadiusElement>(*this, radius); }

View View::overlay(Alignment alignment, const View& content) const {
    return modified<OverlayElement>(*this, alignment, content);
}

View View::font(const Font& font) const {
    return inherited(*this, [font](Environment& inner) { inner.font = font; });
}

View View::foregroundColor(std::optional<Color> color) const {
    if (!color) return *this;
    return inherited(*this, [color](Environment& inner) { inner.foregroundColor = color; });
}

View View::multilineTextAlignment(TextAlignment alignment) const {
    return inherited(*this, [alignment](Environment& inner) { inner.textAlignment = alignment; });
}

View View::layoutDirection(LayoutDirection direction) const {
    return inherited(*this, [direction](Environment& inner) { inner.layoutDirection = direction; });
}

View View::ignoresSafeArea(Edge edges) const { return modified<IgnoresSafeAreaElement>(*this, edges); }

View View::onLayout(std::string key, std::function<void(Size)> action) const {
    return modified<LayoutObserverElement>(*this, std::move(key), std::move(action));
}

}  // namespace vantix
