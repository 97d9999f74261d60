#include "Platform/Ports/ApplicationLifeCycle.h"

#include "Platform/Ports/NotificationCenter.h"

#include <utility>

namespace vantix {

ApplicationLifeCycle::ApplicationLifeCycle(std::shared_ptr<NotificationCenter> notificationCenter,
                                           ApplicationState state)
    : notificationCenter_(std::move(notificationCenter)), state_(state) {}

ApplicationState ApplicationLifeCycle::state() const {
    thread_.assertCurrent("ApplicationLifeCycle::state");
    return state_;
}

void ApplicationLifeCycle::becomeActive() {
    if (state() == ApplicationState::active) return;
    state_ = ApplicationState::active;
    post(ApplicationNotification::didBecomeActive);
}

void ApplicationLifeCycle::resignActive() {
    if (state() != ApplicationState::active) return;
    state_ = ApplicationState::inactive;
    post(ApplicationNotification::willResignActive);
}

void ApplicationLifeCycle::enterBackground() {
    resignActive();
    if (state() == ApplicationState::background) return;
    state_ = ApplicationState::background;
    post(ApplicationNotification::didEnterBackground);
}

void ApplicationLifeCycle::terminate() {
    thread_.assertCurrent("ApplicationLifeCycle::terminate");
    post(ApplicationNotification::willTerminate);
    isTerminated_ = true;
}

void ApplicationLifeCycle::post(const char* name) const {
    if (!isTerminated_) notificationCenter_->post({name, {}});
}

}  // namespace vantix
