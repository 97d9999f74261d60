#pragma once

#include "Platform/Ports/ApplicationLifeCycle.h"
#include "Platform/Values/Export.h"
#include "VantixInAppMessage/Core/InAppMessagePresentationDelegate.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixQt/HostOptions.h"
#include "VantixQt/QtApplicationPort.h"

#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <atomic>
#include <memory>

namespace vantix {
class NotificationCenter;
class QtFontCatalogue;
class ThreadedDispatcher;
}  // namespace vantix

namespace vantix::qt {

class Surroundings;

/// From a host's making to its end: the ports on this toolkit, the core library and the module on them. GUI thread
/// only.
class VANTIX_EXPORT HostRun final : public QObject {
    Q_OBJECT

public:
    explicit HostRun(const HostOptions& options);
    ~HostRun() override;

    InAppMessagingCore& core() { return *core_; }
    Surroundings& surroundings() { return *surroundings_; }

    /// For the scenes of this run.
    const SceneServices& sceneServices() const { return services_; }
    /// The scene takes part until it ends; a message on it then counts as dismissed.
    void addScene(const std::shared_ptr<WindowScene>& scene);
    /// A message may be put up now that could not before.
    void announceReadiness();

    /// See Host::setInForeground.
    void setInForeground(bool inForeground);

    /// Work of the main queue.
    bool event(QEvent* event) override;

signals:
    void openURL(const QUrl& url);
    void openDeepLink(const QUrl& link);
    void presented(const QString& scope);
    void dismissed(const QString& scope);
    void reported(const QString& name, const QVariantMap& attributes);
    void requestSent(const QString& method, const QUrl& address, const QString& body);

private:
    class Presentation;

    void wakeOnWork();
    void installPorts();
    void installCore(const HostOptions& options);
    void emitReadable(void (HostRun::*opened)(const QUrl& url), const std::string& text);
    void startModule(const HostOptions& options);
    void followApplicationState();
    void applyApplicationState();

    /// Whether an event that wakes the loop is on its way.
    std::atomic<bool> isWaking_ = false;
    std::shared_ptr<ThreadedDispatcher> dispatcher_;
    std::shared_ptr<NotificationCenter> notificationCenter_;
    std::shared_ptr<QtFontCatalogue> fonts_;
    std::shared_ptr<Surroundings> surroundings_;
    std::shared_ptr<QtApplicationPort> application_;
    SceneServices services_;
    ApplicationLifeCycle lifeCycle_;
    bool isInForeground_ = true;
    std::shared_ptr<Presentation> presentation_;
    std::shared_ptr<InAppMessagingCore> core_;
};

}  // namespace vantix::qt
