#include "VantixCore/Installation/Installation.h"

#include "Platform/Disk/EndingDisk.h"
#include "Platform/Disk/FileDisk.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Values/AtomicPointer.h"
#include "Platform/Values/FatalError.h"
#include "VantixCore/Images/ImageService.h"
#include "VantixCore/Network/BackEndClient.h"
#include "VantixCore/Network/HTTPClient.h"
#include "VantixCore/Reports/ReportSender.h"
#include "VantixCore/Settings/FileUserDefaults.h"
#include "VantixCore/Store/SQLiteStores.h"
#include "VantixCore/VantixDomainFactory.h"

#include <utility>
#include <vector>

namespace vantix {

namespace {

/// Never destroyed: threads may ask until the very end of the process.
AtomicPointer<Installation>& installed() {
    static auto* installation = new AtomicPointer<Installation>;
    return *installation;
}

std::shared_ptr<DispatchQueue> makeQueue(const Platform& platform, std::string_view name) {
    return platform.dispatcher->makeSerialQueue(VantixDomainFactory::getDomain(name), QualityOfService::utility);
}

}  // namespace

Installation::Installation(VantixHost host)
    : platform_(Platform::current()),
      disk_(std::make_shared<EndingDisk>(platform_->disk ? platform_->disk : std::make_shared<FileDisk>())),
      host_(std::make_shared<const VantixHost>(std::move(host))) {
    if (!host_->appGroup || host_->dataDirectory.empty()) return;
    settings_ = std::make_shared<FileUserDefaults>(disk_, host_->dataDirectory / "settings.json",
                                                   makeQueue(*platform_, "settings"));
}

Installation::~Installation() = default;

std::shared_ptr<Installation> Installation::current() {
    auto installation = installed().load();
    if (!installation) fatalError("Vantix::install has not been called");
    return installation;
}

void Installation::replace(std::shared_ptr<Installation> installation) { installed().store(std::move(installation)); }

void Installation::endDiskUse(Duration within) { disk_->endAfter(within); }

std::shared_ptr<HTTPClient> Installation::httpClient() {
    return httpClient_.get([this] { return std::make_shared<HTTPClient>(makeQueue(*platform_, "network"), host_); });
}

std::shared_ptr<BackEndClient> Installation::backEnd() {
    return backEnd_.get([this] { return std::make_shared<BackEndClient>(httpClient()); });
}

std::shared_ptr<ImageService> Installation::images() {
    return images_.get([this] {
        std::vector decodingQueues{makeQueue(*platform_, "decoding-1"), makeQueue(*platform_, "decoding-2")};
        return std::make_shared<ImageService>(httpClient(), platform_->imageDecoder, makeQueue(*platform_, "images"),
                                              std::move(decodingQueues), disk_, host_->dataDirectory / "images",
                                              host_->imageCacheCapacity);
    });
}

std::shared_ptr<ReportSender> Installation::reports() {
    if (host_->dataDirectory.empty()) return nullptr;
    return reports_.get([this] {
        auto outbox = std::make_shared<ReportOutbox>(disk_, host_->dataDirectory / "reports.sqlite");
        return std::make_shared<ReportSender>(std::move(outbox), makeQueue(*platform_, "reports"), backEnd(),
                                              host_->retrySpread);
    });
}

std::shared_ptr<SQLiteStores> Installation::stores() {
    return stores_.get(
        [this] { return std::make_shared<SQLiteStores>(platform_->dispatcher, disk_, host_->dataDirectory); });
}

std::shared_ptr<void> Installation::sharedObject(std::type_index type,
                                                 const std::function<std::shared_ptr<void>()>& make) {
    std::lock_guard lock(sharedObjectsMutex_);
    std::shared_ptr<void>& object = sharedObjects_[type];
    if (!object) object = make();
    return object;
}

}  // namespace vantix
