#include "VantixQtQuick/QmlHost.h"

#include <QDesktopServices>
#include <QMetaMethod>
#include <QPointer>
#include <QQuickItem>

#include <utility>

namespace vantix::qt {

QmlHost::~QmlHost() = default;

void QmlHost::componentComplete() {
    const HostOptions& options = *this;
    host_ = std::make_unique<QuickHost>(options);
    relaySignals();
    followProperties();
    addEnclosingWindow();
    for (const auto& operation : std::exchange(awaited_, {})) operation();
}

void QmlHost::perform(std::function<void()> operation) {
    if (host_) return operation();
    awaited_.push_back(std::move(operation));
}

void QmlHost::relaySignals() {
    QuickHost* host = host_.get();
    connect(host, &Host::deepLinkActivated, this, &QmlHost::deepLinkActivated);
    connect(host, &Host::messageShown, this, &QmlHost::messageShown);
    connect(host, &Host::messageGone, this, &QmlHost::messageGone);
    connect(host, &Host::reported, this, &QmlHost::reported);
    connect(host, &Host::requestSent, this, &QmlHost::requestSent);
    connect(host, &Host::urlActivated, this, [this](const QUrl& address) {
        if (isSignalConnected(QMetaMethod::fromSignal(&QmlHost::urlActivated))) {
            emit urlActivated(address);
        } else {
            QDesktopServices::openUrl(address);
        }
    });
}

void QmlHost::followProperties() {
    QuickHost* host = host_.get();
    auto follow = [&](auto changed, auto apply) {
        apply();
        connect(this, changed, host, apply);
    };
    follow(&QmlHost::messagesAllowedChanged, [this, host] { host->setMessagesAllowed(messagesAllowed_); });
    follow(&QmlHost::textScaleChanged, [this, host] { host->setTextScale(textScale_); });
    follow(&QmlHost::reducesMotionChanged, [this, host] { host->setReducesMotion(reducesMotion_); });
    follow(&QmlHost::inForegroundChanged, [this, host] { host->setInForeground(inForeground_); });
    connect(this, &QmlHost::customerIdChanged, host, [this, host] { host->setCustomerId(customerId); });
}

void QmlHost::addEnclosingWindow() {
    for (QObject* owner = parent(); owner; owner = owner->parent()) {
        if (auto window = qobject_cast<QQuickWindow*>(owner)) return addWindow(window);
        auto item = qobject_cast<QQuickItem*>(owner);
        if (!item) continue;
        if (item->window()) return addWindow(item->window());
        // The scene is still being put together.
        connect(item, &QQuickItem::windowChanged, this, &QmlHost::addWindow);
        return;
    }
}

bool QmlHost::receivePush(const QJsonObject& campaign) {
    if (!host_) {
        perform([this, campaign] { receivePush(campaign); });
        return true;
    }
    QString whyNot;
    bool isReceived = host_->receivePush(campaign, &whyNot);
    if (!isReceived) emit pushRefused(whyNot);
    return isReceived;
}

void QmlHost::captureEvent(const QString& name, const QVariantMap& attributes) {
    perform([this, name, attributes] { host_->captureEvent(name, attributes); });
}

void QmlHost::logOut() {
    perform([this] {
        host_->logOut();
        customerId.clear();
        emit customerIdChanged();
    });
}

void QmlHost::dismiss() {
    if (host_) host_->dismiss();
}

void QmlHost::addWindow(QQuickWindow* window) {
    perform([this, window = QPointer(window)] { host_->addWindow(window); });
}

void QmlHost::removeWindow(QQuickWindow* window) {
    perform([this, window = QPointer(window)] { host_->removeWindow(window); });
}

}  // namespace vantix::qt
