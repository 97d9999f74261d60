#include "CampaignCheck/Rules/Picture.h"

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Ports/TextMeasurer.h"
#include "Platform/Values/Contrast.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace vantix {

namespace {

using Content = HostingController<InAppMessageView>;

/// An address that nobody fetches, so that the placeholder is drawn.
constexpr const char* placeholderOnly = "placeholder:";

std::shared_ptr<Content> contentOf(VantixInAppMessagePayload message, const SceneTraits& traits) {
    if (!message.body.image.empty()) message.body.image = placeholderOnly;
    auto shared = std::make_shared<const VantixInAppMessagePayload>(std::move(message));
    auto content = std::make_shared<Content>(std::make_shared<InAppMessageView>(shared, nullptr));
    content->setTraits(traits);
    return content;
}

/// A layout may ask for another one with what it has measured.
void settle(Content& content) {
    constexpr int mostSteps = 4;
    bool isAsked = true;
    content.setOnNeedsDisplay([&] { isAsked = true; });
    for (int step = 0; step < mostSteps && std::exchange(isAsked, false); ++step) {
        content.evaluate(*Platform::current()->textMeasurer);
    }
    content.setOnNeedsDisplay({});
}

Picture::State settled(Content& content) {
    settle(content);
    return {content.displayList(), content.elements()};
}

/// Makes the screen higher until nothing is scrolled any more.
SceneTraits unrolled(Content& content, SceneTraits traits) {
    constexpr int mostSteps = 4;
    for (int step = 0; step < mostSteps && content.scrollArea().range > 0; ++step) {
        traits.size.height += content.scrollArea().range;
        content.setTraits(traits);
        settle(content);
    }
    return traits;
}

/// Whether there is anything to answer.
bool answer(Content& content) {
    constexpr int lastStar = 4;
    bool hasStars = content.activate({Role::star, lastStar});
    bool hasOptions = content.activate({Role::option, 0});
    return hasStars || hasOptions;
}

}  // namespace

const AccessibleElement* Picture::State::element(const ElementIdentity& identity) const {
    auto found = std::ranges::find(elements, identity, &AccessibleElement::identity);
    return found == elements.end() ? nullptr : &*found;
}

bool Picture::State::isPainted(Point point, std::size_t end) const {
    return std::any_of(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(end), [&](const DisplayItem& item) {
        const auto* fill = std::get_if<FillRect>(&item);
        return fill && fill->color.alpha > 0 && fill->frame.contains(point);
    });
}

Color Picture::State::background(Point point, std::size_t end, Color behind) const {
    for (std::size_t at = 0; at < end; ++at) {
        const auto* fill = std::get_if<FillRect>(&items[at]);
        if (fill && fill->frame.contains(point)) behind = composited(fill->color, behind);
    }
    return behind;
}

Picture::Picture(const VantixInAppMessagePayload& message, const SceneTraits& traits)
    : windowColor_(message.style.phoneBackgroundColor) {
    auto content = contentOf(message, traits);
    settle(*content);
    scrollRange_ = content->scrollArea().range;
    traits_ = unrolled(*content, traits);
    untouched_ = settled(*content);
    answered_ = answer(*content) ? settled(*content) : untouched_;
}

std::size_t Picture::drawnButtons() const {
    return static_cast<std::size_t>(std::ranges::count(untouched_.elements, Role::button, &AccessibleElement::role));
}

Color Picture::window(Color application) const {
    return windowColor_ ? composited(*windowColor_, application) : application;
}

bool Picture::differsFor(const VantixInAppMessagePayload& other) const {
    auto content = contentOf(other, traits_);
    if (settled(*content).items != untouched_.items) return true;
    return answer(*content) && settled(*content).items != answered_.items;
}

}  // namespace vantix
