#include "Tools/vantix-inapp/Headless/Simulation.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "Tools/vantix-inapp/Headless/HeadlessQt.h"
#include "VantixCore/Vantix.h"
#include "VantixCore/VantixNetworkManager.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "VantixQt/Drawing/QtImageDecoder.h"
#include "VantixQt/Drawing/QtTextMeasurer.h"

namespace vantix {

namespace {

VantixConfiguration coreConfiguration(const Configuration& configuration) {
    VantixConfiguration core;
    core.account = configuration.accountId;
    core.base = configuration.baseURL;
    core.keyHash = configuration.sslKeyHash;
    core.token = configuration.accessToken;
    return core;
}

std::shared_ptr<QtFontCatalogue> fontsWithoutDisplay() {
    startHeadlessQt();
    return std::make_shared<QtFontCatalogue>();
}

}  // namespace

Simulation::Simulation(const Configuration& configuration, const std::filesystem::path& stateDirectory,
                       std::shared_ptr<Dispatcher> dispatcher, VantixHost host)
    : configuration_(configuration),
      coreConfiguration_(std::make_shared<ReplaceableConfiguration>(coreConfiguration(configuration))),
      fonts_(fontsWithoutDisplay()),
      painter_(fonts_) {
    auto measurer = std::make_shared<QtTextMeasurer>(fonts_);
    scene_ = std::make_shared<OffscreenScene>(configuration.device, dispatcher, measurer);
    Platform::install({dispatcher, std::make_shared<NotificationCenter>(),
                       std::make_shared<OffscreenApplication>(scene_), fonts_, measurer,
                       std::make_shared<QtImageDecoder>(), disk_});

    host.dataDirectory = stateDirectory;
    host.appGroup = configuration.appGroup;
    Vantix::install(std::move(host));

    NotificationCore::setAllowed(configuration.pushAllowed);
    setForegroundScene(configuration.scene);
    setCustomer(configuration.customerId);
}

Simulation::~Simulation() {
    scene_->setOnShown({});
    scene_->setOnHidden({});
    if (core_) core_->tearDown();
    VantixNetworkManager::cancelAll();
    Vantix::endDiskUse();
}

InAppMessagingCore& Simulation::core() {
    if (!core_) start(configuration_.applicationState);
    return *core_;
}

void Simulation::restart(ApplicationState applicationState) {
    core().tearDown();
    core_ = nullptr;
    start(applicationState);
}

void Simulation::start(ApplicationState applicationState) {
    auto configuration = std::make_shared<VantixInAppMessageConfiguration>(
        coreConfiguration_, configuration_.notificationCore ? pushLibrary_ : nullptr, configuration_.appStoreId);
    core_ = InAppMessagingCore::create(configuration, configuration_.environment, applicationState);
}

void Simulation::useBackend(const std::string& baseURL, const std::optional<std::string>& sslKeyHash) {
    VantixConfiguration configuration = coreConfiguration_->current();
    configuration.base = baseURL;
    if (sslKeyHash) configuration.keyHash = *sslKeyHash;
    coreConfiguration_->replace(std::move(configuration));
}

void Simulation::syncTriggers(const std::string& cuID) {
    core();
    VantixInAppTriggerManager::create(coreConfiguration_)->syncTriggers({.cuID = cuID});
}

void Simulation::setForegroundScene(bool inForeground) {
    scene_->setActivationState(inForeground ? SceneActivationState::foregroundActive
                                            : SceneActivationState::background);
}

void Simulation::setCustomer(const std::optional<std::string>& customerId) {
    if (auto settings = Vantix::getSharedUserDefaults()) settings->setCustomerId(customerId);
}

}  // namespace vantix
