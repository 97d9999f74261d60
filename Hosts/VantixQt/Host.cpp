#include "VantixQt/Host.h"

#include "Platform/Values/FatalError.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/Core/InAppCampaign.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "VantixQt/Drawing/RequiredApplication.h"
#include "VantixQt/HostRun.h"
#include "VantixQt/QtValues.h"
#include "VantixQt/Windows/Surroundings.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QThread>

namespace vantix::qt {

namespace {

bool hasHost = false;

void claimProcess() {
    requireApplication("vantix::qt::Host");
    if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
        fatalError("vantix::qt::Host: make it on the GUI thread");
    }
    if (hasHost) fatalError("vantix::qt::Host: a process has one host at a time, and one is there already");
    hasHost = true;
}

}  // namespace

Host::Host(const HostOptions& options, QObject* parent) : QObject(parent) {
    claimProcess();
    run_ = std::make_unique<HostRun>(options);
    connect(run_.get(), &HostRun::openDeepLink, this, &Host::deepLinkActivated, Qt::QueuedConnection);
    connect(run_.get(), &HostRun::openURL, this, &Host::openAddress, Qt::QueuedConnection);
    connect(run_.get(), &HostRun::presented, this, &Host::messageShown, Qt::QueuedConnection);
    connect(run_.get(), &HostRun::dismissed, this, &Host::messageGone, Qt::QueuedConnection);
    connect(run_.get(), &HostRun::reported, this, &Host::reported, Qt::QueuedConnection);
    connect(run_.get(), &HostRun::requestSent, this, &Host::requestSent, Qt::QueuedConnection);
}

Host::~Host() {
    run_ = nullptr;
    hasHost = false;
}

bool Host::receivePush(const QJsonObject& campaign, QString* whyNot) {
    auto refuse = [&](const std::string& reason) {
        if (whyNot) *whyNot = QString::fromStdString(reason);
        return false;
    };
    QByteArray text = QJsonDocument(campaign).toJson(QJsonDocument::Compact);
    auto push = pushOfCampaign({text.constData(), static_cast<std::size_t>(text.size())});
    if (!push) return refuse(push.error().localizedDescription);
    auto message = VantixInAppMessagePayload::generate(push.value());
    if (auto objection = firstObjection(message)) return refuse(*objection);
    run_->core().silentPushListener(message);
    return true;
}

void Host::captureEvent(const QString& name, const QVariantMap& attributes) {
    std::optional<Dictionary> given;
    if (!attributes.isEmpty()) given = dictionary(attributes);
    Vantix::captureEvent(name.toStdString(), given);
}

void Host::setCustomerId(const QString& customerId) {
    auto settings = Vantix::getSharedUserDefaults();
    if (!settings) return;
    settings->setCustomerId(customerId.isEmpty() ? std::nullopt : std::optional(customerId.toStdString()));
}

void Host::logOut() {
    dismiss();
    setCustomerId({});
    run_->core().userLoggedOut();
}

void Host::dismiss() { run_->core().dismissPresentedInAppMessage(); }

void Host::setMessagesAllowed(bool allowed) {
    NotificationCore::setAllowed(allowed);
    if (allowed) run_->announceReadiness();
}

void Host::setReducesMotion(bool reduces) { run_->surroundings().setReducesMotion(reduces); }

void Host::setTextScale(double scale) { run_->surroundings().setTextScale(scale); }

void Host::setInForeground(bool inForeground) { run_->setInForeground(inForeground); }

void Host::openAddress(const QUrl& address) {
    static const QMetaMethod activated = QMetaMethod::fromSignal(&Host::urlActivated);
    if (isSignalConnected(activated)) {
        emit urlActivated(address);
    } else {
        QDesktopServices::openUrl(address);
    }
}

}  // namespace vantix::qt
