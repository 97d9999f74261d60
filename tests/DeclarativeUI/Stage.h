#pragma once

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Divider.h"
#include "DeclarativeUI/Elements/GeometryReader.h"
#include "DeclarativeUI/Elements/ResizableImage.h"
#include "DeclarativeUI/Elements/ScrollView.h"
#include "DeclarativeUI/Elements/Shapes.h"
#include "DeclarativeUI/Elements/SourcedImage.h"
#include "DeclarativeUI/Elements/Spacer.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "DeclarativeUI/Elements/SymbolImage.h"
#include "DeclarativeUI/Elements/Text.h"
#include "DeclarativeUI/HostedView.h"
#include "tests/Support/FixedTextMeasurer.h"

#include <functional>
#include <memory>
#include <string>

namespace vantix {

constexpr Color red{1, 0, 0, 1};
constexpr Color blue{0, 0, 1, 1};

/// A window without safe areas, one pixel for each point.
inline SceneTraits window(double width, double height) { return {{width, height}, {}, 1, 1}; }

/// Counts how often it is asked, for tests of what is measured again.
class CountingMeasurer final : public TextMeasurer {
public:
    TextLayout layOut(std::string_view text, const Font& font, double maximumWidth) const override {
        ++count;
        return FixedTextMeasurer().layOut(text, font, maximumWidth);
    }
    mutable int count = 0;
};

/// A hosted view in a window of its own, and its layout as text.
class Stage {
public:
    Stage(SceneTraits traits, std::function<View()> body) : view_(std::make_shared<HostedView>(std::move(body))) {
        view_->setOnNeedsDisplay([this] { ++requests; });
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
            requests = 0;
            view_->evaluate(measurer);
        } while (requests > 0);
    }

    HostedView& view() { return *view_; }
    const std::shared_ptr<HostedView>& sharedView() const { return view_; }
    AccessibleElement element(Role role, int index = 0) const;
    /// What a tap meets: "button 0", or "nothing", and "something" for what is no element.
    std::string met(Point point) const;
    /// The marks of the layout: "a 0,0 50x20 | b 58,0 42x20".
    std::string marks() const;

    CountingMeasurer measurer;
    /// For display, since the last evaluation.
    int requests = 0;

private:
    std::shared_ptr<HostedView> view_;
};

/// Something to lay out, listed under its name. It takes all that is offered along an absent length.
View mark(const std::string& name, std::optional<double> width, std::optional<double> height);

/// A text of which each character is as wide as high lines are: 10 by 24 points.
View words(const std::string& text);

}  // namespace vantix
