#include "VantixPushNotification/NotificationCore.h"

#include <atomic>
#include <map>
#include <mutex>

namespace vantix {

namespace {

std::atomic<bool> allowed{true};

template <typename T>
bool areSame(const std::weak_ptr<T>& known, const std::shared_ptr<T>& other) {
    return !known.owner_before(other) && !other.owner_before(known);
}

}  // namespace

struct NotificationCore::Listeners {
    std::mutex mutex;
    std::map<std::string, std::weak_ptr<VantixSilentPushNotificationProtocol>> silentPush;
    std::vector<std::weak_ptr<VantixNotificationsReceiverProtocol>> receivers;
};

NotificationCore::NotificationCore() : listeners_(std::make_unique<Listeners>()) {}

NotificationCore::~NotificationCore() = default;

void NotificationCore::registerSilentPushListener(
    const std::string& forModule, const std::shared_ptr<VantixSilentPushNotificationProtocol>& delegate) {
    std::lock_guard lock(listeners_->mutex);
    listeners_->silentPush[forModule] = delegate;
}

void NotificationCore::addNotificationReceiver(const std::shared_ptr<VantixNotificationsReceiverProtocol>& receiver) {
    std::lock_guard lock(listeners_->mutex);
    auto& receivers = listeners_->receivers;
    std::erase_if(receivers, [&](const auto& known) { return known.expired() || areSame(known, receiver); });
    receivers.push_back(receiver);
}

void NotificationCore::receiveSilentPush(const std::string& module, const Dictionary& notification) const {
    std::shared_ptr<VantixSilentPushNotificationProtocol> listener;
    {
        std::lock_guard lock(listeners_->mutex);
        auto known = listeners_->silentPush.find(module);
        if (known != listeners_->silentPush.end()) listener = known->second.lock();
    }
    if (listener) listener->handleSilentPushNotification(notification);
}

void NotificationCore::deliver(const std::optional<std::vector<VantixNotificationPayload>>& notifications) const {
    std::vector<std::weak_ptr<VantixNotificationsReceiverProtocol>> receivers;
    {
        std::lock_guard lock(listeners_->mutex);
        receivers = listeners_->receivers;
    }
    for (const auto& known : receivers) {
        if (auto receiver = known.lock()) receiver->notificationsReceived(notifications);
    }
}

bool NotificationCore::isAllowed() { return allowed; }

void NotificationCore::setAllowed(bool value) { allowed = value; }

}  // namespace vantix
