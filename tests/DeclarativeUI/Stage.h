#pragma once

#include "DeclarativeUI/HostedView.h"
#include "DeclarativeUI/View.h"
#include "tests/Support/FixedTextMeasurer.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

namespace vantix {

/// Counts how often it is asked, for tests of what is measured again.
class CountingMeasurer final : public TextMeasurer {
public:
    TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const override {
        ++layoutCount_;
        return measurer_.layOut(text, font, maximumWidth);
    }
    int layoutCount() const { return layoutCount_; }

private:
    FixedTextMeasurer measurer_;
    mutable int layoutCount_ = 0;
};

/// A hosted view in a window of its own, and its layout as text.
class Stage {
public:
    Stage(SceneTraits traits, std::function<View()> body) : view_(std::make_shared<HostedView>(std::move(body))) {
        view_->setOnNeedsDisplay([this] { ++requests_; });
        show(traits);
    }
    Stage(SceneTraits traits, View view) : Stage(traits, [view] { return view; }) {}

    void show(const SceneTraits& traits) {
        view_->setTraits(traits);
        settle();
    }
    /// Evaluates until nothing asks for display.
    void settle() {
        do {
            requests_ = 0;
            view_->evaluate(measurer_);
        } while (requests_ > 0);
    }
    void evaluate() { view_->evaluate(measurer_); }
    void tap(Point point) {
        if (auto met = view_->hitTest(point); met.action) met.action();
    }

    HostedView& view() { return *view_; }
    const CountingMeasurer& measurer() const { return measurer_; }
    int requests() const { return requests_; }
    AccessibleElement element(Role role, int index = 0) const;

    /// The marks of the layout: "a 0,0 50x20 | b 58,0 42x20".
    std::string marks() const;
    /// What is drawn: "fill 0,0 50x20 #ff0000 r5 | text 0,16 'ab'".
    std::string drawing() const;

private:
    CountingMeasurer measurer_;
    std::shared_ptr<HostedView> view_;
    int requests_ = 0;
};

/// Something to lay out, listed under its name. It takes all that is offered along an absent length.
View mark(const std::string& name, std::optional<double> width, std::optional<double> height);

/// A text of which each character is as wide as high lines are: 10 by 24 points.
View words(const std::string& text);

std::string describe(Point point);
std::string describe(const Rect& frame);
/// What a tap meets: "button 0", or "nothing", and "something" for what is no element.
std::string describe(const HostedView::TapResult& met);

}  // namespace vantix
