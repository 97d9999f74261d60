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
Picture::State settled(Content& content) {
    constexpr int mostSteps = 4;
    bool isAsked = true;
    content.setOnNeedsDisplay([&] { isAsked = true; });
    for (int step = 0; step < mostSteps && std::exchange(isAsked, false); ++step) {
        content.evaluate(*Platform::current()->textMeasurer);
    }
    content.setOnNeedsDisplay({});
    return {content.displayList(), content.elements(), content.scrollArea().range};
}

void answer(Content& content) {
    constexpr int lastStar = 4;
    content.activate({Role::star, lastStar});
    content.activate({Role::option, 0});
}

}  // namespace

Picture::Picture(const VantixInAppMessagePayload& message, const SceneTraits& traits)
    : traits_(traits), window_(message.style.phoneBackgroundColor) {
    auto content = contentOf(message, traits);
    untouched_ = settled(*content);
    answer(*content);
    answered_ = settled(*content);
}

bool Picture::differsFor(const VantixInAppMessagePayload& other) const {
    auto content = contentOf(other, traits_);
    if (settled(*content).items != untouched_.items) return true;
    answer(*content);
    return settled(*content).items != answered_.items;
}

std::optional<Color> Picture::State::background(Point point, std::size_t end, std::optional<Color> window) const {
    bool isSeenThrough = !window || window->alpha < 1;
    Color color = isSeenThrough ? Color::white() : *window;
    for (std::size_t at = 0; at < end; ++at) {
        const auto* fill = std::get_if<FillRect>(&items[at]);
        if (!fill || !fill->frame.contains(point)) continue;
        color = composited(fill->color, color);
        isSeenThrough = isSeenThrough && fill->color.alpha < 1;
    }
    return isSeenThrough ? std::nullopt : std::optional(color);
}

}  // namespace vantix
