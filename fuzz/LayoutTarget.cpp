#include "DeclarativeUI/Interaction/Interaction.h"
#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/RandomTree.h"
#include "tests/Support/PaintedEdges.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <cmath>

using namespace vantix;

namespace {

/// A message as it comes from bytes, of any type, with any texts.
VantixInAppMessagePayload randomPayload(fuzz::Choices& choices) {
    Campaign campaign;
    campaign.type = rawValue(choices.of(supportedInAppMessageTypes));
    campaign.title = choices.text();
    campaign.message = choices.text();
    campaign.image = choices.flag() ? "https://a.example/a.png" : "";
    campaign.buttons.assign(static_cast<std::size_t>(choices.below(9)), choices.text());
    for (int count = choices.below(9); count > 0; --count) campaign.feedbackOptions.emplace_back(choices.text());
    const Dictionary style{{"textSize", std::to_string(choices.byte())},
                           {"backgroundColor", choices.color().hexString()}};
    campaign.style = {{"title", style}, {"message", style}, {"ctas", List{style, Dictionary()}}};
    return campaign.payload();
}

SceneTraits randomTraits(fuzz::Choices& choices) {
    SceneTraits traits{{choices.byte() * 4.0, choices.byte() * 4.0}, {choices.length(), 0, choices.length(), 0}};
    traits.scale = 1 + choices.below(9) / 4.0;
    traits.textScale = 0.5 + choices.below(12) / 4.0;
    traits.layoutDirection = choices.word<LayoutDirection>(2);
    if (choices.below(16) == 15) traits.size.width = choices.anyLength();
    return traits;
}

bool isSound(const Rect& rect) {
    bool isFinite =
        std::isfinite(rect.minX()) && std::isfinite(rect.minY()) && std::isfinite(rect.maxX() + rect.maxY());
    return isFinite && rect.size.width >= 0 && rect.size.height >= 0;
}

bool isSound(const DisplayItem& item) {
    return std::visit(
        [](const auto& shape) {
            if constexpr (requires { shape.frame; }) return isSound(shape.frame);
            if constexpr (requires { shape.font; }) return isSound(Rect{shape.origin, {}}) && shape.font.size >= 1;
            return true;
        },
        item);
}

/// A person in front of a hosted view, who does what the input says; `actions` counts what comes of it.
class Person {
public:
    Person(fuzz::Choices& choices, const int& actions, std::function<View()> body)
        : choices_(choices), actions_(actions), view_(std::make_shared<HostedView>(std::move(body))) {
        view_->setOnNeedsDisplay([this] { asks_ = true; });
        show(randomTraits(choices));
    }

    void act() {
        int before = actions_;
        Point point{choices_.coordinate(traits_.size.width), choices_.coordinate(traits_.size.height)};
        switch (choices_.below(6)) {
            case 0:
                std::swap(traits_.size.width, traits_.size.height);
                return show(traits_);
            case 1:
                view_->scroll(choices_.anyLength() - choices_.length());
                break;
            case 2:
                interaction_.keyDown(choices_.word<Key>(12));
                break;
            case 3:
                interaction_.pointerDown(point);
                interaction_.pointerMoved({choices_.anyLength(), choices_.anyLength()});
                break;
            default:
                interaction_.pointerDown(point);
                interaction_.pointerUp(point);
        }
        fuzz::expect(actions_ <= before + 1, "one touch or key does one thing");
        settle();
    }

private:
    void show(const SceneTraits& traits) {
        traits_ = traits;
        view_->setTraits(traits);
        asks_ = true;
        settle();
    }

    void settle() {
        for (int layouts = 0; std::exchange(asks_, false); ++layouts) {
            fuzz::expect(layouts < 8, "a layout settles");
            view_->evaluate(measurer_);
        }
        for (const DisplayItem& item : view_->displayList())
            fuzz::expect(isSound(item), "what is painted is somewhere");
        auto offGrid = edgesBetweenPixels(*view_, traits_.scale);
        fuzz::expect(offGrid.empty(), "edges lie between pixels: " + offGrid);
        auto area = view_->scrollArea();
        fuzz::expect(area.offset >= 0 && area.offset <= area.range && isSound(area.viewport), "scrolling is bounded");
        for (const AccessibleElement& element : view_->elements()) {
            fuzz::expect(isSound(element.frame) && isSound(element.target), "an element is somewhere");
            expectMeans(element.target, element);
        }
    }

    /// All of a control's target must mean the control.
    void expectMeans(const Rect& target, const AccessibleElement& element) const {
        if (isContainer(element.role) || target.size.width < 0.01 || target.size.height < 0.01) return;
        double right = target.maxX() - 0.001, bottom = target.maxY() - 0.001;
        for (Point point : {target.center(), target.origin, Point{right, bottom}}) {
            auto met = view_->hitTest(point).element;
            fuzz::expect(met && met->identity() == element.identity(), "targets do not overlap");
        }
    }

    fuzz::Choices& choices_;
    const int& actions_;
    FixedTextMeasurer measurer_;
    std::shared_ptr<HostedView> view_;
    Interaction interaction_{view_, FocusCycle::closed};
    SceneTraits traits_;
    bool asks_ = false;
};

void watch(fuzz::Choices& choices, const int& actions, std::function<View()> body) {
    Person person(choices, actions, std::move(body));
    for (int count = 0; count < 32 && !choices.isEmpty(); ++count) person.act();
}

void showMessage(VantixInAppMessagePayload payload, fuzz::Choices& choices, const int& actions) {
    auto shared = std::make_shared<const VantixInAppMessagePayload>(std::move(payload));
    auto root = std::make_shared<InAppMessageView>(shared, nullptr);
    watch(choices, actions, [root] { return root->body(); });
}

}  // namespace

/// A message of any kind, or any tree, in a window of any size, under touches, keys and turns of the device. Nothing is
/// fetched: the queues of the machine stand still.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto dispatcher = std::make_shared<VirtualDispatcher>();
    Platform platform = fuzz::platform();
    platform.dispatcher = dispatcher;
    platform.application = std::make_shared<OffscreenApplication>(
        std::make_shared<OffscreenScene>(SceneTraits{}, dispatcher, std::make_shared<FixedTextMeasurer>()));
    Platform::install(std::move(platform));
    Vantix::install({.logSink = [](const LogLine&) {}});

    fuzz::Choices choices(fuzz::textOf(data, size));
    int actions = 0;
    switch (choices.below(4)) {
        case 0:
            fuzz::untilFatalCondition([&] {
                View tree = fuzz::RandomTree{choices, [&] { ++actions; }}.tree();
                watch(choices, actions, [tree] { return tree; });
            });
            break;
        case 1: {
            auto payload = randomPayload(choices);
            for (InAppCTA& cta : payload.body.ctas) cta.actionText.reset();
            fuzz::untilFatalCondition([&] { showMessage(std::move(payload), choices, actions); });
            break;
        }
        default:
            showMessage(randomPayload(choices), choices, actions);
    }
    Vantix::uninstall();
    Platform::uninstall();
    VantixLogger::setSink({});
    return 0;
}
