#pragma once

#include "Platform/Values/Value.h"
#include "VantixCore/SentRequest.h"
#include "VantixCore/VantixEvents.h"
#include "VantixCore/VantixLogger.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// What the core library needs of the application it runs in, and what it tells it. Every handler may be empty and may
/// be called on any thread, one at a time for each handler only if the handler sees to it.
struct VantixHost {
    /// Made when missing; the folder itself, not a link to it. Holds the stores, the settings, the reports and the
    /// image cache; one process at a time.
    std::filesystem::path dataDirectory = {};
    /// Whether the app group is set up; without it there are no shared settings.
    bool appGroup = true;
    /// Bytes of images kept on disk; those used least recently go first.
    std::uintmax_t imageCacheCapacity = 64U << 20;
    /// 1 lets transfers end in the order in which they were asked for.
    std::size_t maximumConcurrentTransfers = 32;
    /// From 0 to 1: how late, within its bounds, reports are sent again. Empty: by chance, each time anew.
    std::function<double()> retrySpread = {};

    /// Takes the log lines instead of standard error.
    std::function<void(const LogLine&)> logSink = {};
    /// Opens a URL outside the application. Whoever writes a campaign chooses the text; it is called only for an
    /// absolute URL without control characters and without blanks at its ends, whose scheme is not about, blob,
    /// content, data, file, intent, javascript, vbscript, a drive's letter or in `refusedSchemes`. What is refused is
    /// an error in the log. What a scheme leads to on this machine remains this handler's business.
    std::function<void(const std::string& url)> openURL = {};
    /// Follows a deep link inside the application. The same holds, except for the schemes in `deepLinkSchemes`. What
    /// follows the scheme is as little to be trusted as any other input.
    std::function<void(const std::string& link)> handleDeepLink = {};
    /// Schemes that are opened as little as those above. Without their colon, in any letter case; so below.
    std::vector<std::string> refusedSchemes = {};
    /// The application's own schemes: deep links with them are followed even where the scheme would be refused.
    std::vector<std::string> deepLinkSchemes = {};

    /// For tools: told of every report, call to action and network call as it happens.
    std::function<void(const char* kind, std::string_view name, const Dictionary& attributes)> onReport = {};
    std::function<void(const CTA& cta, const Dictionary& notificationPayload)> onCallToAction = {};
    std::function<void(const SentRequest& request)> onRequest = {};
};

}  // namespace vantix
