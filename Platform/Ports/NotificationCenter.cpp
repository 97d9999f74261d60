#include "Platform/Ports/NotificationCenter.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace vantix {

using Handler = std::function<void(const Notification&)>;

struct NotificationCenter::Registry {
    struct Observer {
        std::string name;
        std::shared_ptr<const Handler> handler;
    };

    std::mutex mutex;
    std::uint64_t lastIdentifier = 0;
    /// By the order of registration.
    std::map<std::uint64_t, Observer> observers;
};

NotificationCenter::NotificationCenter() : registry_(std::make_shared<Registry>()) {}

NotificationCenter::~NotificationCenter() = default;

std::unique_ptr<NotificationCenter::Observation> NotificationCenter::addObserver(std::string name, Handler handler) {
    struct Registration final : Observation {
        std::weak_ptr<Registry> registry;
        std::uint64_t identifier = 0;

        ~Registration() override {
            auto alive = registry.lock();
            if (!alive) return;
            std::lock_guard lock(alive->mutex);
            alive->observers.erase(identifier);
        }
    };

    auto registration = std::make_unique<Registration>();
    registration->registry = registry_;
    std::lock_guard lock(registry_->mutex);
    registration->identifier = ++registry_->lastIdentifier;
    registry_->observers[registration->identifier] = {std::move(name),
                                                      std::make_shared<const Handler>(std::move(handler))};
    return registration;
}

void NotificationCenter::post(const Notification& notification) const {
    std::vector<std::shared_ptr<const Handler>> handlers;
    {
        std::lock_guard lock(registry_->mutex);
        for (const auto& [identifier, observer] : registry_->observers) {
            if (observer.name == notification.name) handlers.push_back(observer.handler);
        }
    }
    for (const auto& handler : handlers) (*handler)(notification);
}

}  // namespace vantix
