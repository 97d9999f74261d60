#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/Image.h"
#include "VantixCore/VantixHost.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <typeindex>

namespace vantix {

class BackEndClient;
class EndingDisk;
class FileUserDefaults;
class HTTPClient;
class ImageService;
class ReportSender;
class SQLiteStores;

/// Everything that lives once per program, on the platform that was installed when it was made. Each service is made at
/// its first use and gets what it needs handed in. Usable from any thread.
class Installation {
public:
    /// Reads the settings, so that no later use waits for the disk.
    explicit Installation(VantixHost host);
    ~Installation();

    /// The one that is installed. Asking before there is one is a programming error and stops the process.
    static std::shared_ptr<Installation> current();
    /// From now on this is the one.
    static void replace(std::shared_ptr<Installation> installation);

    const std::shared_ptr<const Platform>& platform() const { return platform_; }
    const std::shared_ptr<const VantixHost>& host() const { return host_; }

    /// Null without an app group or a data directory.
    const std::shared_ptr<FileUserDefaults>& settings() const { return settings_; }
    std::shared_ptr<HTTPClient> httpClient();
    std::shared_ptr<BackEndClient> backEnd();
    std::shared_ptr<ImageService> images();
    /// Null without a data directory.
    std::shared_ptr<ReportSender> reports();
    std::shared_ptr<SQLiteStores> stores();

    /// See Vantix::endDiskUse.
    void endDiskUse(Duration within);

    /// The object of that type that another library keeps here, made at first use.
    std::shared_ptr<void> sharedObject(std::type_index type, const std::function<std::shared_ptr<void>()>& make);

    /// What image views without a placeholder of their own show. Main thread only.
    std::function<Image()> defaultPlaceholder;

private:
    /// Made once, at first use.
    template <typename Service>
    class Lazy {
    public:
        template <typename Make>
        const std::shared_ptr<Service>& get(Make make) {
            std::call_once(made_, [&] { service_ = make(); });
            return service_;
        }

    private:
        std::once_flag made_;
        std::shared_ptr<Service> service_;
    };

    std::shared_ptr<const Platform> platform_;
    std::shared_ptr<EndingDisk> disk_;
    std::shared_ptr<const VantixHost> host_;
    std::shared_ptr<FileUserDefaults> settings_;
    Lazy<HTTPClient> httpClient_;
    Lazy<BackEndClient> backEnd_;
    Lazy<ImageService> images_;
    Lazy<ReportSender> reports_;
    Lazy<SQLiteStores> stores_;

    std::mutex sharedObjectsMutex_;
    std::map<std::type_index, std::shared_ptr<void>> sharedObjects_;
};

}  // namespace vantix
