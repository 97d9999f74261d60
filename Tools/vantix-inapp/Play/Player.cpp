#include "Tools/vantix-inapp/Play/Player.h"

#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/ScreenPicture.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Play/ElementList.h"
#include "Tools/vantix-inapp/Play/EventLines.h"
#include "Tools/vantix-inapp/Play/LineWriter.h"
#include "Tools/vantix-inapp/Play/RunningBackends.h"
#include "Tools/vantix-inapp/Play/StoredRecords.h"
#include "Tools/vantix-inapp/Play/TapTarget.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include <utility>

namespace vantix {

namespace {

std::shared_ptr<HostedView> topmostContent(OffscreenScene& scene) {
    auto windows = scene.windows();
    return windows.empty() ? nullptr : windows.back().content;
}

List scopes(const InAppMessageQueue& queue) {
    List list;
    for (const auto& message : queue.messages()) list.push_back(message->scope);
    return list;
}

}  // namespace

Player::Player(Simulation& simulation, Pace& pace, RunningBackends& backends, EventLines& events, LineWriter& lines,
               std::filesystem::path outputDirectory)
    : simulation_(simulation),
      pace_(pace),
      backends_(backends),
      events_(events),
      lines_(lines),
      outputDirectory_(std::move(outputDirectory)) {}

void Player::play(const Step& step) {
    simulation_.core();
    std::visit([this](const auto& concrete) { run(concrete); }, step);
    pace_.settle();
}

// What reaches the module from outside

void Player::run(const step::Push& push) {
    simulation_.pushLibrary().receiveSilentPush(std::string(rawValue(VantixNotificationType::inapp)), push.dictionary);
}

void Player::run(const step::Deliver& deliver) { simulation_.pushLibrary().deliver(deliver.notifications); }

void Player::run(const step::Payload& payload) {
    auto message = VantixInAppMessagePayload::generate(payload.dictionary);
    simulation_.core().silentPushListener(message, [&lines = lines_](bool stored) {
        lines.write("completion", Dictionary{{"of", "payload"}, {"result", stored}});
    });
}

void Player::run(const step::Event& event) { Vantix::captureEvent(event.name, event.attributes); }

void Player::run(const step::LifeCycle& lifeCycle) {
    Platform::current()->notificationCenter->post({lifeCycle.notification, {}});
}

void Player::run(const step::SetScene& scene) { simulation_.setForegroundScene(scene.inForeground); }

void Player::run(const step::SetPushAllowed& pushAllowed) { NotificationCore::setAllowed(pushAllowed.allowed); }

void Player::run(const step::SetCustomer& customer) { simulation_.setCustomer(customer.customerId); }

void Player::run(const step::Wait& wait) { pace_.wait(wait.duration); }

void Player::run(const step::Restart& restart) { simulation_.restart(restart.applicationState); }

void Player::run(const step::StartBackend& start) {
    const Backend& backend = backends_.start(start.options);
    lines_.hideBackendAddress(backend.url());
    simulation_.useBackend(backend.url(), backend.pin());
}

void Player::run(const step::SetDiskFault& disk) { simulation_.setDiskFault(disk.fault); }

// What the person at the device does

void Player::run(const step::Tap& tap) {
    auto content = topmostContent(simulation_.scene());
    auto met = content ? findTapTarget(*content, tap) : HostedView::TapResult{};
    if (!met.element) return lines_.write("tapped", nullptr);
    lines_.write("tapped", Dictionary{{"role", roleName(met.element->role)},
                                      {"label", met.element->label},
                                      {"index", met.element->index}});
    if (met.action) met.action();
}

void Player::run(const step::Scroll& scroll) {
    if (auto content = topmostContent(simulation_.scene())) content->scroll(scroll.points);
}

// What the host calls

void Player::run(const step::Dismiss&) { simulation_.core().dismissInAppMessage(events_.shownLast()); }

void Player::run(const step::ButtonAction&) { simulation_.core().handleInAppMessageButtonAction(events_.shownLast()); }

void Player::run(const step::LogOut&) { simulation_.core().userLoggedOut(); }

void Player::run(const step::Sync& sync) { simulation_.syncTriggers(sync.cuID); }

// What is printed and painted

void Player::run(const step::PrintElements&) {
    auto windows = simulation_.scene().windows();
    lines_.write("elements", windows.empty() ? List{} : elementList(windows.back()));
}

void Player::run(const step::PrintStore&) {
    readStoredRecords([&lines = lines_](Value rows) { lines.write("store", std::move(rows)); });
}

void Player::run(const step::PrintQueues&) {
    auto queues = simulation_.core().inAppMessageQueueManager()->queues();
    const auto& broadcast = queues->broadcastInAppMessage;
    lines_.write("queues", Dictionary{{"milestone", scopes(queues->milestoneInAppMessages)},
                                      {"broadcast", broadcast ? Value(broadcast->scope) : Value()},
                                      {"other", scopes(queues->otherInAppMessages)}});
}

void Player::run(const step::Screenshot& screenshot) {
    writePicture(paintScreen(simulation_.scene(), simulation_.painter()), outputDirectory_ / screenshot.name);
}

}  // namespace vantix
