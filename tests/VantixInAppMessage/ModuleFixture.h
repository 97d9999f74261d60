#pragma once

#include "DeclarativeUI/HostedView.h"
#include "DeclarativeUI/Offscreen/Aim.h"
#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "Platform/Ports/FontCatalogue.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/FixedTextMeasurer.h"
#include "tests/Support/Recorder.h"
#include "tests/VantixCore/InstalledHost.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <utility>

namespace vantix {

using Texts = std::vector<std::string>;

struct ScriptedFontCatalogue final : FontCatalogue {
    std::set<std::string, std::less<>> names;
    bool contains(std::string_view name) const override { return names.contains(name); }
};

/// The module on a phone without a display: real store, real network, and, unless a test chooses otherwise, virtual
/// time.
template <typename DispatcherKind = VirtualDispatcher>
class ModuleFixture : public testing::Test {
protected:
    ModuleFixture() : installed_(recorder.host(dataDirectory()), std::make_shared<FakeImageDecoder>()) {
        Platform platform = *Platform::current();
        platform.application = application;
        platform.fontCatalogue = fonts;
        platform.textMeasurer = measurer_;
        Platform::install(std::move(platform));
        Vantix::getSharedUserDefaults()->setCustomerId("customer");
    }

    ~ModuleFixture() override { core.reset(); }

    DispatcherKind& dispatcher() { return *installed_.dispatcher; }
    std::filesystem::path dataDirectory() const { return folder_.path() / "data"; }

    static void useApplication(std::shared_ptr<Application> used) {
        Platform platform = *Platform::current();
        platform.application = std::move(used);
        Platform::install(std::move(platform));
    }

    FaultyDisk& disk() { return *installed_.disk; }

    // The module and what happens to it; each of these lets the queues run empty.

    void start(ApplicationState state = ApplicationState::active, Env environment = Env::dev) {
        core = InAppMessagingCore::create(configuration, environment, state);
        settle();
    }

    void push(const Campaign& campaign) { receive(campaign.push()); }
    void receive(const Dictionary& notification) {
        notificationCore->receiveSilentPush("inapp", notification);
        settle();
    }

    void post(std::string event, std::optional<Dictionary> attributes = {}) {
        Vantix::captureEvent(std::move(event), std::move(attributes));
        settle();
    }

    void becomeActive() {
        Platform::current()->notificationCenter->post({ApplicationNotification::didBecomeActive, {}});
        settle();
    }

    void advance(double time) { dispatcher().advance(seconds(time)); }

    /// Taps the first element of the role on the topmost window; false when there is none that wants it.
    bool tap(Role role, const std::string& label = {}) {
        auto windows = scene->windows();
        if (windows.empty()) return false;
        HostedView& content = *windows.back().content;
        auto elements = content.elements();
        auto met = std::find_if(elements.begin(), elements.end(), [&](const AccessibleElement& element) {
            return element.role == role && (label.empty() || element.label == label);
        });
        if (met == elements.end()) return false;
        auto result = aimAt(content, *met);
        if (result.action) result.action();
        settle();
        return result.action != nullptr;
    }

    void settle() {
        if constexpr (requires { dispatcher().runUntilIdle(); }) dispatcher().runUntilIdle();
    }

    // What can be seen of it.

    /// The scopes of the messages on screen, from the lowest window to the topmost.
    Texts shown() const {
        Texts scopes;
        for (const auto& window : scene->windows()) {
            auto root = std::dynamic_pointer_cast<HostingController<InAppMessageView>>(window.content);
            scopes.push_back(root->rootView().viewModel()->inAppMessage().scope);
        }
        return scopes;
    }

    /// The scopes of all stored messages of the customer.
    Texts stored() {
        Texts scopes;
        InAppRepoHelper::shared()->fetchAllInAppMessages([&](const std::vector<InAppMessage>& records) {
            for (const auto& record : records) scopes.push_back(*record[InAppMessage::Property::scope]);
        });
        settle();
        return scopes;
    }

    const std::shared_ptr<InAppDisplayManager>& displayManager() const { return core->inAppDisplayManager(); }
    const std::shared_ptr<InAppMessageQueueManager>& queueManager() const { return core->inAppMessageQueueManager(); }

    Recorder recorder;
    std::shared_ptr<ScriptedFontCatalogue> fonts = std::make_shared<ScriptedFontCatalogue>();

private:
    TemporaryFolder folder_;
    InstalledHost<DispatcherKind> installed_;
    std::shared_ptr<FixedTextMeasurer> measurer_ = std::make_shared<FixedTextMeasurer>();

protected:
    std::shared_ptr<OffscreenScene> scene = std::make_shared<OffscreenScene>(
        SceneTraits{.size = {390, 844}, .safeArea = {47, 0, 34, 0}}, installed_.dispatcher, measurer_);
    Image icon = vectorImage("<svg/>");
    std::shared_ptr<OffscreenApplication> application = std::make_shared<OffscreenApplication>(scene, icon);
    std::shared_ptr<NotificationCore> notificationCore = std::make_shared<NotificationCore>();
    std::shared_ptr<VantixInAppMessageConfiguration> configuration = std::make_shared<VantixInAppMessageConfiguration>(
        std::make_shared<VantixConfiguration>(), notificationCore, "4711");
    std::shared_ptr<InAppMessagingCore> core;
};

using ModuleTest = ModuleFixture<>;

}  // namespace vantix
