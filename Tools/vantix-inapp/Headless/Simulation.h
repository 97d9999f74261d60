#pragma once

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Disk/FaultyDisk.h"
#include "Platform/Disk/FileDisk.h"
#include "Tools/vantix-inapp/Headless/Configuration.h"
#include "Tools/vantix-inapp/Headless/ReplaceableConfiguration.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixPushNotification/NotificationCore.h"
#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtFontCatalogue.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

class Dispatcher;
struct VantixHost;

/// A host application without a display: the machine's ports, one screen, and the module in it. One at a time; main
/// thread only.
class Simulation {
public:
    /// Installs the ports and the host (whose data directory and app group are set here), starts nothing yet.
    Simulation(const Configuration& configuration, const std::filesystem::path& stateDirectory,
               std::shared_ptr<Dispatcher> dispatcher, VantixHost host);
    /// Takes everything down again, silently.
    ~Simulation();

    /// The module, started at first use in the configured state.
    InAppMessagingCore& core();
    /// Tears the module down, if it runs, and starts it again on the same store.
    void restart(ApplicationState applicationState);

    /// From now on calls go to this back end; without a pin the one that was configured stays.
    void useBackend(const std::string& baseURL, const std::optional<std::string>& sslKeyHash);
    /// Asks the events API of the configured back end for messages, once.
    void syncTriggers(const std::string& cuID);

    const NotificationCore& pushLibrary() const { return *pushLibrary_; }
    OffscreenScene& scene() { return *scene_; }
    /// Paints with the fonts that text is measured with.
    DisplayListPainter& painter() { return painter_; }
    /// What the disk does with the module's files from now on.
    void setDiskFault(DiskFault fault) { disk_->setFault(fault); }
    void setForegroundScene(bool inForeground);
    /// Absent: no customer is known. Without an app group there is nowhere to keep it.
    void setCustomer(const std::optional<std::string>& customerId);

private:
    void start(ApplicationState applicationState);

    Configuration configuration_;
    std::shared_ptr<ReplaceableConfiguration> coreConfiguration_;
    std::shared_ptr<NotificationCore> pushLibrary_ = std::make_shared<NotificationCore>();
    std::shared_ptr<FaultyDisk> disk_ = std::make_shared<FaultyDisk>(std::make_shared<FileDisk>());
    std::shared_ptr<QtFontCatalogue> fonts_;
    DisplayListPainter painter_;
    std::shared_ptr<OffscreenScene> scene_;
    std::shared_ptr<InAppMessagingCore> core_;
};

}  // namespace vantix
