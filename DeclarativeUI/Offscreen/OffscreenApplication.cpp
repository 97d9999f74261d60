#include "DeclarativeUI/Offscreen/OffscreenApplication.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/TextMeasurer.h"

#include <algorithm>
#include <map>

namespace vantix {

struct OffscreenScene::Implementation : std::enable_shared_from_this<OffscreenScene::Implementation> {
    SceneTraits traits;
    SceneActivationState activationState = SceneActivationState::foregroundActive;
    std::shared_ptr<Dispatcher> dispatcher;
    std::shared_ptr<TextMeasurer> measurer;
    std::function<void(const HostedView&)> onShown;
    std::function<void(const HostedView&)> onHidden;
    /// In the order in which they were put up.
    std::vector<ShownWindow> windows;

    void evaluateOnNextTurn(const std::shared_ptr<HostedView>& content) {
        dispatcher->mainQueue().async([self = weak_from_this(), weak = std::weak_ptr(content)] {
            auto scene = self.lock();
            auto view = weak.lock();
            if (scene && view && scene->isShown(view)) view->evaluate(*scene->measurer);
        });
    }

    bool isShown(const std::shared_ptr<HostedView>& content) const {
        return std::any_of(windows.begin(), windows.end(),
                           [&](const ShownWindow& window) { return window.content == content; });
    }

    void show(const ShownWindow& window) {
        windows.push_back(window);
        const auto& content = window.content;
        content->setTraits(traits);
        content->setOnNeedsDisplay([self = weak_from_this(), weak = std::weak_ptr(content)] {
            auto scene = self.lock();
            auto view = weak.lock();
            if (scene && view) scene->evaluateOnNextTurn(view);
        });
        evaluateOnNextTurn(content);
        if (onShown) onShown(*content);
    }

    void remove(const std::shared_ptr<HostedView>& content) {
        auto removed = std::erase_if(windows, [&](const ShownWindow& window) { return window.content == content; });
        if (removed && onHidden) onHidden(*content);
    }
};

namespace {

/// `Scene` is the offscreen scene's implementation, which is private to it.
template <typename Scene>
class OffscreenWindow final : public Window {
public:
    OffscreenWindow(std::weak_ptr<Scene> scene, std::shared_ptr<HostedView> content)
        : scene_(std::move(scene)), content_(std::move(content)) {}
    ~OffscreenWindow() override { OffscreenWindow::removeFromSuperview(); }

    void removeFromSuperview() override {
        auto scene = scene_.lock();
        if (scene && content_) scene->remove(content_);
        content_ = nullptr;
    }

private:
    std::weak_ptr<Scene> scene_;
    std::shared_ptr<HostedView> content_;
};

}  // namespace

OffscreenScene::OffscreenScene(SceneTraits traits, std::shared_ptr<Dispatcher> dispatcher,
                               std::shared_ptr<TextMeasurer> measurer)
    : implementation_(std::make_shared<Implementation>()) {
    implementation_->traits = traits;
    implementation_->dispatcher = std::move(dispatcher);
    implementation_->measurer = std::move(measurer);
}

OffscreenScene::~OffscreenScene() = default;

SceneActivationState OffscreenScene::activationState() const { return implementation_->activationState; }

void OffscreenScene::setActivationState(SceneActivationState state) { implementation_->activationState = state; }

SceneTraits OffscreenScene::traits() const { return implementation_->traits; }

void OffscreenScene::setTraits(const SceneTraits& traits) {
    implementation_->traits = traits;
    for (ShownWindow& window : implementation_->windows) {
        window.description.frame = {{}, traits.size};
        window.content->setTraits(traits);
    }
}

void OffscreenScene::setOnShown(std::function<void(const HostedView&)> handler) {
    implementation_->onShown = std::move(handler);
}

void OffscreenScene::setOnHidden(std::function<void(const HostedView&)> handler) {
    implementation_->onHidden = std::move(handler);
}

std::unique_ptr<Window> OffscreenScene::makeWindow(WindowDescription description) {
    auto content = std::dynamic_pointer_cast<HostedView>(description.rootContent);
    if (!content) return nullptr;
    if (!description.isHidden) implementation_->show({description, content});
    return std::make_unique<OffscreenWindow<Implementation>>(implementation_, content);
}

std::vector<OffscreenScene::ShownWindow> OffscreenScene::windows() const {
    auto windows = implementation_->windows;
    std::stable_sort(windows.begin(), windows.end(), [](const ShownWindow& a, const ShownWindow& b) {
        return a.description.level < b.description.level;
    });
    return windows;
}

OffscreenApplication::OffscreenApplication(std::shared_ptr<OffscreenScene> scene, Image icon)
    : scene_(std::move(scene)), icon_(std::move(icon)) {}

std::vector<std::shared_ptr<Scene>> OffscreenApplication::connectedScenes() const {
    return connected_ ? std::vector<std::shared_ptr<Scene>>{scene_} : std::vector<std::shared_ptr<Scene>>{};
}

Image OffscreenApplication::icon() const { return icon_; }

void OffscreenApplication::setConnected(bool connected) { connected_ = connected; }

}  // namespace vantix
