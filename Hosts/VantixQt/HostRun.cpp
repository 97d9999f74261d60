#include "VantixQt/HostRun.h"

#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/Vantix.h"
#include "VantixCore/VantixNetworkManager.h"
#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtFontCatalogue.h"
#include "VantixQt/Drawing/QtImageDecoder.h"
#include "VantixQt/Drawing/QtTextMeasurer.h"
#include "VantixQt/HostLog.h"
#include "VantixQt/QtValues.h"
#include "VantixQt/Windows/Surroundings.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QStandardPaths>

#include <filesystem>
#include <system_error>
#include <utility>

namespace vantix::qt {

namespace {

constexpr LogSource log{"VantixQt/HostRun"};

const auto wakeUpEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// Whoever names a link means the folder to which it leads.
std::filesystem::path dataDirectory(const QString& given) {
    QString named =
        given.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/inapp" : given;
    std::error_code problem;
    auto folder = std::filesystem::weakly_canonical(named.toStdString(), problem);
    return problem ? std::filesystem::path(named.toStdString()) : folder;
}

ApplicationState stateOf(Qt::ApplicationState state) {
    switch (state) {
        case Qt::ApplicationActive:
            return ApplicationState::active;
        case Qt::ApplicationInactive:
            return ApplicationState::inactive;
        default:
            return ApplicationState::background;
    }
}

/// Until the toolkit says otherwise an application that starts counts as active: its windows have yet to come up.
ApplicationState stateAtStart() {
    auto state = stateOf(QGuiApplication::applicationState());
    return state == ApplicationState::inactive ? ApplicationState::active : state;
}

}  // namespace

/// Hands the module's questions and news on.
class HostRun::Presentation final : public InAppMessagePresentationDelegate {
public:
    explicit Presentation(HostRun& run) : run_(run) {}

    bool shouldPresent(const PresentedMessage&) override { return run_.application_->isReady(); }
    void didPresent(const PresentedMessage& message) override {
        emit run_.presented(QString::fromStdString(message.scope));
    }
    void didDismiss(const PresentedMessage& message) override {
        emit run_.dismissed(QString::fromStdString(message.scope));
    }

private:
    HostRun& run_;
};

HostRun::HostRun(const HostOptions& options)
    : dispatcher_(std::make_shared<ThreadedDispatcher>()),
      notificationCenter_(std::make_shared<NotificationCenter>()),
      fonts_(std::make_shared<QtFontCatalogue>()),
      surroundings_(std::make_shared<Surroundings>()),
      application_(std::make_shared<QtApplicationPort>()),
      services_{dispatcher_, std::make_shared<QtTextMeasurer>(fonts_), std::make_shared<DisplayListPainter>(fonts_),
                surroundings_},
      lifeCycle_(notificationCenter_, stateAtStart()),
      presentation_(std::make_shared<Presentation>(*this)) {
    wakeOnWork();
    installPorts();
    installCore(options);
    startModule(options);
    followApplicationState();
}

HostRun::~HostRun() {
    disconnect(qGuiApp, nullptr, this, nullptr);
    core_->tearDown();
    core_ = nullptr;
    application_->removeAll();
    VantixNetworkManager::cancelAll();
    Vantix::endDiskUse();
    dispatcher_->shutDown();
    Vantix::uninstall();
    Platform::uninstall();
}

void HostRun::wakeOnWork() {
    // At most one event is on its way; any thread may hand over work.
    dispatcher_->setMainQueueWaker([this] {
        if (!isWaking_.exchange(true)) QCoreApplication::postEvent(this, new QEvent(wakeUpEvent));
    });
}

bool HostRun::event(QEvent* event) {
    if (event->type() != wakeUpEvent) return QObject::event(event);
    isWaking_.store(false);
    dispatcher_->drainMainQueue();
    return true;
}

void HostRun::installPorts() {
    Platform::install({dispatcher_, notificationCenter_, application_, fonts_,
                       std::const_pointer_cast<TextMeasurer>(services_.measurer), std::make_shared<QtImageDecoder>()});
}

void HostRun::installCore(const HostOptions& options) {
    VantixHost host;
    host.dataDirectory = dataDirectory(options.dataDirectory);
    host.logSink = writeToLog;
    host.refusedSchemes = texts(options.refusedSchemes);
    host.deepLinkSchemes = texts(options.deepLinkSchemes);
    // These are called on any thread; a queued signal brings them to this one, after the tap that they come from.
    host.openURL = [this](const std::string& url) { emitReadable(&HostRun::openURL, url); };
    host.handleDeepLink = [this](const std::string& link) { emitReadable(&HostRun::openDeepLink, link); };
    host.onReport = [this](const char*, std::string_view name, const Dictionary& attributes) {
        emit reported(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())), variantMap(attributes));
    };
    host.onRequest = [this](const SentRequest& request) {
        emit requestSent(QString::fromStdString(request.method), QUrl(QString::fromStdString(request.url)),
                         QString::fromStdString(request.body));
    };
    Vantix::install(std::move(host));
    if (options.customerId.isEmpty()) return;
    if (auto settings = Vantix::getSharedUserDefaults()) settings->setCustomerId(options.customerId.toStdString());
}

void HostRun::emitReadable(void (HostRun::*opened)(const QUrl& url), const std::string& text) {
    QUrl url(QString::fromStdString(text));
    if (url.isValid()) {
        emit(this->*opened)(url);
    } else {
        log.error("emitReadable(_:_:)", [&] { return "Refused to open \"" + text + "\": it cannot be read"; });
    }
}

void HostRun::startModule(const HostOptions& options) {
    auto core = std::make_shared<VantixConfiguration>();
    core->account = options.accountId.toStdString();
    core->base = options.baseUrl.toStdString();
    core->keyHash = options.sslKeyHash.toStdString();
    core->token = options.accessToken.toStdString();
    std::optional<std::string> appStoreId;
    if (!options.appStoreId.isEmpty()) appStoreId = options.appStoreId.toStdString();
    auto configuration = std::make_shared<VantixInAppMessageConfiguration>(core, nullptr, appStoreId);
    core_ = InAppMessagingCore::create(configuration, Env::dev, lifeCycle_.state());
    // The core library has set its own level.
    VantixLogger::setConsoleLogLevel(lowestWrittenLevel());
    core_->setPresentationDelegate(presentation_);
}

void HostRun::followApplicationState() {
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &HostRun::applyApplicationState);
    connect(qGuiApp, &QGuiApplication::aboutToQuit, this, [this] { lifeCycle_.terminate(); });
}

void HostRun::setInForeground(bool inForeground) {
    if (std::exchange(isInForeground_, inForeground) != inForeground) applyApplicationState();
}

void HostRun::applyApplicationState() {
    if (!isInForeground_) return lifeCycle_.enterBackground();
    switch (stateOf(QGuiApplication::applicationState())) {
        case ApplicationState::active:
            return lifeCycle_.becomeActive();
        case ApplicationState::inactive:
            return lifeCycle_.resignActive();
        case ApplicationState::background:
            return lifeCycle_.enterBackground();
    }
}

void HostRun::addScene(const std::shared_ptr<WindowScene>& scene) {
    application_->add(scene);
    connect(scene.get(), &WindowScene::activated, this, [this, scene = scene.get()] {
        application_->bringToFront(*scene);
        announceReadiness();
    });
    connect(scene.get(), &WindowScene::available, this, &HostRun::announceReadiness);
    connect(scene.get(), &WindowScene::ended, this, [this, scene = scene.get()] { application_->remove(*scene); });
    announceReadiness();
}

void HostRun::announceReadiness() { notificationCenter_->post({ApplicationNotification::sceneDidActivate, {}}); }

}  // namespace vantix::qt
