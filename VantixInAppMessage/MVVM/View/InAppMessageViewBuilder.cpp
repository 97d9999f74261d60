#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/MainThread.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"

#include <algorithm>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"MVVM/View/InAppMessageViewBuilder"};

std::shared_ptr<Scene> foregroundActiveWindowScene() {
    auto scenes = Platform::current()->application->connectedScenes();
    auto found = std::find_if(scenes.begin(), scenes.end(), [](const auto& scene) {
        return scene->activationState() == SceneActivationState::foregroundActive && scene->isWindowScene();
    });
    return found == scenes.end() ? nullptr : *found;
}

WindowEntrance entrance(VantixInAppNotificationType type) {
    switch (type) {
        case VantixInAppNotificationType::header:
            return WindowEntrance::top;
        case VantixInAppNotificationType::footer:
            return WindowEntrance::bottom;
        default:
            return WindowEntrance::inPlace;
    }
}

}  // namespace

InAppMessageViewBuilder::InAppMessageViewBuilder(std::shared_ptr<InAppMessageActions> displayManager)
    : inAppDisplayManager_(std::move(displayManager)) {}

bool InAppMessageViewBuilder::createInAppWindow(const SharedPayload& message) {
    assertMainThread("createInAppWindow(for:)");
    auto scene = foregroundActiveWindowScene();
    auto window = scene ? customizeWindow(*scene, message) : nullptr;
    if (!window) {
        log.error("createInAppWindow(for:)", "Didn't found active foreground scene");
        return false;
    }
    inAppWindow_ = std::move(window);
    return true;
}

std::unique_ptr<Window> InAppMessageViewBuilder::customizeWindow(Scene& scene, const SharedPayload& message) {
    WindowDescription description;
    description.frame = {{}, scene.traits().size};
    description.backgroundColor = message->style.phoneBackgroundColor;
    description.level = WindowLevel::alert;
    description.rootContent = std::make_shared<HostingController<InAppMessageView>>(
        std::make_shared<InAppMessageView>(message, inAppDisplayManager_));
    description.alpha = 1.0;
    description.isHidden = false;
    description.blocksApplication = !message->body.isBanner();
    description.entrance = entrance(message->body.type);
    description.onEnded = whileAlive(weak_from_this(), [message](auto& builder) { builder.windowEnded(message); });
    return scene.makeWindow(std::move(description));
}

void InAppMessageViewBuilder::dismissInAppMessage() {
    assertMainThread("dismissInAppMessage()");
    Platform::current()->dispatcher->mainQueue().async(
        whileAlive(weak_from_this(), [](InAppMessageViewBuilder& builder) { builder.removeWindow(); }));
}

void InAppMessageViewBuilder::windowEnded(const SharedPayload& message) {
    assertMainThread("windowEnded(message:)");
    if (inAppDisplayManager_) inAppDisplayManager_->dismissInAppMessage(message, true);
}

void InAppMessageViewBuilder::removeWindow() {
    if (inAppWindow_) inAppWindow_->removeFromSuperview();
    inAppWindow_ = nullptr;
}

void InAppMessageViewBuilder::tearDown() {
    assertMainThread("tearDown()");
    removeWindow();
    inAppDisplayManager_ = nullptr;
}

}  // namespace vantix
