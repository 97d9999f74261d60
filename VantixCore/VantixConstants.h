#pragma once

namespace vantix {

/// The words of the wire and of the log that all Vantix libraries share.
namespace VantixConstants {

namespace Keys::APIRequestKeys {
inline constexpr const char* cuid = "cuid";
inline constexpr const char* scope = "scope";
inline constexpr const char* senderId = "senderId";
inline constexpr const char* senderSource = "senderSource";
inline constexpr const char* custom = "custom";
inline constexpr const char* result = "result";
inline constexpr const char* type = "type";
inline constexpr const char* rating = "rating";
inline constexpr const char* feedback = "feedback";
inline constexpr const char* feedbackOptions = "feedbackOptions";
inline constexpr const char* messageId = "messageId";
inline constexpr const char* gateway = "gateway";
}  // namespace Keys::APIRequestKeys

/// Paths below the base address of the back end.
namespace API {
inline constexpr const char* ReportPath = "/mapp/reports";
}  // namespace API

/// The gateway that every report names.
inline constexpr const char* fcmGateway = "fcm";
/// Begins the log lines that tell of a success.
inline constexpr const char* checkMark = "\u2705";

}  // namespace VantixConstants

namespace NotificationPayloadKeys {
inline constexpr const char* campaignId = "campaignId";
inline constexpr const char* variationId = "variationId";
inline constexpr const char* priority = "priority";
inline constexpr const char* validity = "validity";
inline constexpr const char* messageId = "messageId";
inline constexpr const char* gateway = "gateway";
inline constexpr const char* trigger = "trigger";
inline constexpr const char* body = "body";
inline constexpr const char* accountId = "accountId";
inline constexpr const char* imageIdentifier = "imageIdentifier";
inline constexpr const char* eventName = "eventName";
inline constexpr const char* attributes = "attributes";
inline constexpr const char* type = "type";
inline constexpr const char* title = "title";
inline constexpr const char* message = "message";
inline constexpr const char* image = "image";
inline constexpr const char* ctas = "ctas";
inline constexpr const char* actionText = "actionText";
inline constexpr const char* action = "action";
}  // namespace NotificationPayloadKeys

/// In-process notifications of the core library.
namespace VantixNotification {
/// An event was captured; the object is an `EventProtocol` or a `std::shared_ptr<const EventProtocol>`.
inline constexpr const char* didCaptureInAppTrigger = "didCaptureInAppTrigger";
}  // namespace VantixNotification

}  // namespace vantix
