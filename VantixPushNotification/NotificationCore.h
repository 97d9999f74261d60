#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// A notification that was delivered, with what it carries.
class VantixNotificationPayload {
public:
    VantixNotificationPayload(std::string type, Dictionary payload)
        : type_(std::move(type)), payload_(std::move(payload)) {}

    /// The wire word of a VantixNotificationType.
    const std::string& type() const { return type_; }
    const Dictionary& getJSON() const { return payload_; }

private:
    std::string type_;
    Dictionary payload_;
};

enum class NotificationReceiverType { notifications, inAppMessages };

/// Takes the silent pushes of one module. Called on the thread that delivers.
class VANTIX_EXPORT VantixSilentPushNotificationProtocol {
public:
    virtual ~VantixSilentPushNotificationProtocol() = default;
    virtual void handleSilentPushNotification(const Dictionary& notification) = 0;
};

/// Takes delivered notifications. Called on the thread that delivers.
class VANTIX_EXPORT VantixNotificationsReceiverProtocol {
public:
    virtual ~VantixNotificationsReceiverProtocol() = default;
    virtual NotificationReceiverType getReceiverType() const = 0;
    virtual void notificationsReceived(const std::optional<std::vector<VantixNotificationPayload>>& notifications) = 0;
};

/// The push library: hands pushes to the modules that registered. Listeners are held weakly. Usable from any thread.
class VANTIX_EXPORT NotificationCore {
public:
    NotificationCore();
    ~NotificationCore();

    /// Replaces the module's earlier listener.
    void registerSilentPushListener(const std::string& forModule,
                                    const std::shared_ptr<VantixSilentPushNotificationProtocol>& delegate);
    void addNotificationReceiver(const std::shared_ptr<VantixNotificationsReceiverProtocol>& receiver);

    /// For the host: a silent push for the module arrived; notifications were delivered. Nobody listening is no error.
    void receiveSilentPush(const std::string& module, const Dictionary& notification) const;
    void deliver(const std::optional<std::vector<VantixNotificationPayload>>& notifications) const;

    /// Whether this application may use the Vantix modules. Default true.
    static bool isAllowed();
    static void setAllowed(bool allowed);

private:
    struct Listeners;
    std::unique_ptr<Listeners> listeners_;
};

}  // namespace vantix
