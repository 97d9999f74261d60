#pragma once

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/FixedTextMeasurer.h"
#include "tests/Torture/Load/TimedDispatcher.h"
#include "tests/VantixCore/InstalledHost.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <atomic>

namespace vantix {

/// The module on a phone without a display, for as long as the object lives; another may follow in the same process.
template <typename Inner>
class Housing {
public:
    explicit Housing(const std::filesystem::path& data, const std::string& backEnd = {},
                     ApplicationState state = ApplicationState::active)
        : installed_({.dataDirectory = data, .logSink = [this](const LogLine& line) { count(line); }},
                     std::make_shared<FakeImageDecoder>()) {
        auto measurer = std::make_shared<FixedTextMeasurer>();
        scene = std::make_shared<OffscreenScene>(SceneTraits{.size = {390, 844}, .safeArea = {}}, installed_.dispatcher,
                                                 measurer);
        Platform platform = *Platform::current();
        platform.application = std::make_shared<OffscreenApplication>(scene);
        platform.textMeasurer = measurer;
        Platform::install(std::move(platform));
        Vantix::getSharedUserDefaults()->setCustomerId("customer");
        configuration->base = backEnd;
        core = InAppMessagingCore::create(
            std::make_shared<VantixInAppMessageConfiguration>(configuration, notificationCore), Env::dev, state);
    }
    ~Housing() { core.reset(); }

    Inner& dispatcher() { return installed_.dispatcher->inner; }
    Duration& longestTurn() { return installed_.dispatcher->longestTurn; }
    std::size_t errors() const { return errors_; }

    /// A turn of the main queue.
    void onMain(std::function<void()> work) { installed_.dispatcher->mainQueue().async(std::move(work)); }
    void post(const char* name) {
        onMain([name] { Platform::current()->notificationCenter->post({name, {}}); });
    }
    /// Runs the main queue until the condition holds; false when it does not within a minute.
    template <typename Condition>
    bool run(Condition condition) {
        for (int turn = 0; turn < 60'000 && !condition(); ++turn) {
            if constexpr (std::is_same_v<Inner, ThreadedDispatcher>)
                dispatcher().runMainQueue(seconds(0.001));
            else
                dispatcher().runUntilIdle();
        }
        return condition();
    }
    /// Until the turns that were asked for before are over, and what they had handed to the store is done.
    bool runToEndOfStore() {
        std::atomic<bool> isDone = false;
        onMain([&] { InAppRepoHelper::shared()->removeMessage("", [&](bool) { isDone = true; }); });
        return run([&] { return isDone.load(); });
    }

    std::shared_ptr<OffscreenScene> scene;
    std::shared_ptr<NotificationCore> notificationCore = std::make_shared<NotificationCore>();
    std::shared_ptr<VantixConfiguration> configuration = std::make_shared<VantixConfiguration>();
    std::shared_ptr<InAppMessagingCore> core;

private:
    void count(const LogLine& line) { errors_ += line.level == LogLevel::error; }

    std::atomic<std::size_t> errors_ = 0;
    InstalledHost<TimedDispatcher<Inner>> installed_;
};

using RealHousing = Housing<ThreadedDispatcher>;
using VirtualHousing = Housing<VirtualDispatcher>;

}  // namespace vantix
