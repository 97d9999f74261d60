#pragma once

#include "Platform/Values/Export.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <optional>
#include <string>

namespace vantix {

/// What keeps a message out of the store, or off the screen for good.
enum class InAppMessageObjection {
    /// A push without it is dropped; a message that was delivered with a notification is stored.
    noScope,
    /// Likewise.
    noEventName,
    /// Banners take their image over a secure connection only.
    insecureBannerImage,
    unsupportedType,
    bannerWithoutText,
};

/// Whether the objection holds against the message. Pure, as all here; any thread.
VANTIX_EXPORT bool applies(InAppMessageObjection objection, const VantixInAppMessagePayload& message);

/// The first objection that holds, in words for whoever wrote the message: why a push with it is not stored or, once
/// stored, never shown. Absent when it may be shown.
VANTIX_EXPORT std::optional<std::string> firstObjection(const VantixInAppMessagePayload& message);
/// What keeps the message from this customer once the queues are rebuilt from the store. Absent for a message that
/// names no customer: it was written for nobody in particular, and its sender fills the name in.
VANTIX_EXPORT std::optional<std::string> customerObjection(const VantixInAppMessagePayload& message,
                                                           const std::string& customer);

}  // namespace vantix
