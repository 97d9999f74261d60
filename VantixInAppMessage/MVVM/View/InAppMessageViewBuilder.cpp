#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "Platform/Ports/MainThread.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"

#include <algorithm>

namespace vantix {

namespace {

std::shared_ptr<Scene> foregroundActiveWindowScene() {
    auto scenes = Platform::current()->application->connectedScenes();
    auto found = std::find_if(scenes.begin(), scenes.end(), [](const auto& scene) {
        return scene->activationState() == SceneActivationState::foregroundActive && scene->isWindowScene();
    });
    return found == scenes.end() ? nullptr : *found;
}

}  // namespace

InAppMessageViewBuilder::InAppMessageViewBuilder(std::shared_ptr<InAppDisplayManager> displayManager)
    : inAppDisplayManager_(std::move(displayManager)) {}

bool InAppMessageViewBuilder::createInAppWindow(const VantixInAppMessagePayload& message) {
    assertMainThread("createInAppWindow(for:)");
    auto scene = foregroundActiveWindowScene();
    if (!scene) {
        VantixLogger::error("Didn't found active foreground scene",
                            {"MVVM/View/InAppMessageViewBuilder", "createInAppWindow(for:)"});
        return false;
    }
    inAppWindow_ = customizeWindow(*scene, message);
    return true;
}

std::unique_ptr<Window> InAppMessageViewBuilder::customizeWindow(Scene& scene,
                                                                 const VantixInAppMessagePayload& message) {
    WindowDescription description;
    description.frame = {{}, scene.traits().size};
    description.backgroundColor = message.style.phoneBackgroundColor;
    description.level = WindowLevel::alert;
    description.rootContent = std::make_shared<HostingController<InAppMessageView>>(
        std::make_shared<InAppMessageView>(message, inAppDisplayManager_));
    description.alpha = 1.0;
    description.isHidden = false;
    return scene.makeWindow(std::move(description));
}

void InAppMessageViewBuilder::dismissInAppMessage() {
    Platform::current()->dispatcher->mainQueue().async([weak = weak_from_this()] {
        if (auto builder = weak.lock()) builder->removeWindow();
    });
}

void InAppMessageViewBuilder::removeWindow() {
    if (inAppWindow_) inAppWindow_->removeFromSuperview();
    inAppWindow_ = nullptr;
}

void InAppMessageViewBuilder::tearDown() {
    removeWindow();
    inAppDisplayManager_ = nullptr;
}

}  // namespace vantix
