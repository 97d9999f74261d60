#pragma once

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
bool applies(InAppMessageObjection objection, const VantixInAppMessagePayload& message);

/// Why a push with this message is not stored, in words for whoever wrote it; absent when it is.
std::optional<std::string> whyNotStored(const VantixInAppMessagePayload& message);
/// Why the message, once stored, is never shown, in words for whoever wrote it; absent when it may be.
std::optional<std::string> whyNeverShown(const VantixInAppMessagePayload& message);

}  // namespace vantix
