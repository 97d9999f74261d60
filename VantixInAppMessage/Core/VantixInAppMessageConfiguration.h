#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Image.h"
#include "VantixCore/VantixConfiguration.h"
#include "VantixPushNotification/NotificationCore.h"

#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// Through this the module reads its configuration. The host implements it, or uses VantixInAppMessageConfiguration.
/// Main thread only.
class VANTIX_EXPORT VantixInAppMessageConfigGenerator {
public:
    virtual ~VantixInAppMessageConfigGenerator() = default;

    virtual std::shared_ptr<ConfigurationGenerator> vantixConfig() const = 0;
    virtual void setVantixConfig(std::shared_ptr<ConfigurationGenerator> config) = 0;
    /// Null: the module receives no pushes from the push library.
    virtual std::shared_ptr<NotificationCore> notificationCore() const = 0;
    virtual void setNotificationCore(std::shared_ptr<NotificationCore> core) = 0;
    /// Shown while a message's image loads, or when it fails.
    virtual std::optional<Image> placeholderImage() const = 0;
    virtual void setPlaceholderImage(std::optional<Image> image) = 0;
    /// The application's identifier in the store, for the review page.
    virtual std::optional<std::string> appStoreId() const = 0;
    virtual void setAppStoreId(std::optional<std::string> id) = 0;
};

/// Holds the four values as they are given; validates nothing.
class VANTIX_EXPORT VantixInAppMessageConfiguration final : public VantixInAppMessageConfigGenerator {
public:
    explicit VantixInAppMessageConfiguration(std::shared_ptr<ConfigurationGenerator> vantixConfig,
                                             std::shared_ptr<NotificationCore> notificationCore = {},
                                             std::optional<std::string> appStoreId = {},
                                             std::optional<Image> placeholderImage = {})
        : appStoreId_(std::move(appStoreId)),
          vantixConfig_(std::move(vantixConfig)),
          notificationCore_(std::move(notificationCore)),
          placeholderImage_(std::move(placeholderImage)) {}

    std::shared_ptr<ConfigurationGenerator> vantixConfig() const override { return vantixConfig_; }
    void setVantixConfig(std::shared_ptr<ConfigurationGenerator> config) override { vantixConfig_ = std::move(config); }
    std::shared_ptr<NotificationCore> notificationCore() const override { return notificationCore_; }
    void setNotificationCore(std::shared_ptr<NotificationCore> core) override { notificationCore_ = std::move(core); }
    std::optional<Image> placeholderImage() const override { return placeholderImage_; }
    void setPlaceholderImage(std::optional<Image> image) override { placeholderImage_ = std::move(image); }
    std::optional<std::string> appStoreId() const override { return appStoreId_; }
    void setAppStoreId(std::optional<std::string> id) override { appStoreId_ = std::move(id); }

private:
    std::optional<std::string> appStoreId_;
    std::shared_ptr<ConfigurationGenerator> vantixConfig_;
    std::shared_ptr<NotificationCore> notificationCore_;
    std::optional<Image> placeholderImage_;
};

}  // namespace vantix
