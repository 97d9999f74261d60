#include "DeclarativeUI/Offscreen/OffscreenScene.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/WhileAlive.h"

#include <algorithm>
#include <utility>

namespace vantix {

class OffscreenScene::OffscreenWindow final : public Window {
public:
    OffscreenWindow(std::weak_ptr<OffscreenScene> scene, std::shared_ptr<HostedView> content)
        : scene_(std::move(scene)), content_(std::move(content)) {}
    ~OffscreenWindow() override { OffscreenWindow::removeFromSuperview(); }

    void removeFromSuperview() override {
        auto content = std::exchange(content_, nullptr);
        auto scene = scene_.lock();
        if (scene && content) scene->remove(*content);
    }

private:
    std::weak_ptr<OffscreenScene> scene_;
    std::shared_ptr<HostedView> content_;
};

OffscreenScene::OffscreenScene(SceneTraits traits, std::shared_ptr<Dispatcher> dispatcher,
                               std::shared_ptr<TextMeasurer> measurer)
    : traits_(traits), dispatcher_(std::move(dispatcher)), measurer_(std::move(measurer)) {}

SceneActivationState OffscreenScene::activationState() const {
    assertOnMainQueue("OffscreenScene::activationState");
    return activationState_;
}

void OffscreenScene::setActivationState(SceneActivationState state) {
    assertOnMainQueue("OffscreenScene::setActivationState");
    activationState_ = state;
}

SceneTraits OffscreenScene::traits() const {
    assertOnMainQueue("OffscreenScene::traits");
    return traits_;
}

void OffscreenScene::setTraits(const SceneTraits& traits) {
    assertOnMainQueue("OffscreenScene::setTraits");
    traits_ = traits;
    for (ShownWindow& window : windows_) {
        window.description.frame = {{}, traits.size};
        window.content->setTraits(traits);
    }
}

std::unique_ptr<Window> OffscreenScene::makeWindow(WindowDescription description) {
    assertOnMainQueue("OffscreenScene::makeWindow");
    auto content = std::dynamic_pointer_cast<HostedView>(description.rootContent);
    if (!content) return nullptr;
    if (!description.isHidden) show({std::move(description), content});
    return std::make_unique<OffscreenWindow>(weak_from_this(), std::move(content));
}

std::vector<OffscreenScene::ShownWindow> OffscreenScene::windows() const {
    assertOnMainQueue("OffscreenScene::windows");
    auto windows = windows_;
    std::stable_sort(windows.begin(), windows.end(), [](const ShownWindow& a, const ShownWindow& b) {
        return a.description.level < b.description.level;
    });
    return windows;
}

void OffscreenScene::assertOnMainQueue(std::string_view operation) const {
    assertOnQueue(dispatcher_->mainQueue(), operation);
}

void OffscreenScene::show(const ShownWindow& window) {
    windows_.push_back(window);
    HostedView& content = *window.content;
    content.setTraits(traits_);
    content.setOnNeedsDisplay(whileAlive(weak_from_this(), [view = content.weak_from_this()](OffscreenScene& scene) {
        scene.evaluateOnNextTurn(view);
    }));
    evaluateOnNextTurn(content.weak_from_this());
    if (onShown_) onShown_(content);
}

void OffscreenScene::remove(const HostedView& content) {
    assertOnMainQueue("OffscreenScene::remove");
    auto removed = std::erase_if(windows_, [&](const ShownWindow& window) { return window.content.get() == &content; });
    if (removed && onHidden_) onHidden_(content);
}

void OffscreenScene::evaluateOnNextTurn(std::weak_ptr<HostedView> content) {
    auto evaluateOnScene =
        whileAlive(weak_from_this(), [](OffscreenScene& scene, HostedView& view) { scene.evaluate(view); });
    dispatcher_->mainQueue().async(whileAlive(std::move(content), std::move(evaluateOnScene)));
}

void OffscreenScene::evaluate(HostedView& content) const {
    bool isShown = std::any_of(windows_.begin(), windows_.end(),
                               [&](const ShownWindow& window) { return window.content.get() == &content; });
    if (isShown) content.evaluate(*measurer_);
}

}  // namespace vantix
