#pragma once

#include "CampaignCheck/Rules/Campaign.h"
#include "CampaignCheck/Rules/Finding.h"
#include "CampaignCheck/Rules/Picture.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Values/URL.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// An image as it was fetched; what went wrong, if it was not.
struct FetchedImage {
    std::optional<std::string> problem = {};
    std::uintmax_t bytes = 0;
    PixelSize size = {};
};

/// What is known beside the campaign.
struct CheckOptions {
    /// Who holds the phone; absent: anyone.
    std::optional<std::string> customer = {};
    /// The application's identity in the store, empty when it has none; absent: not known.
    std::optional<std::string> storeId = {};
    std::chrono::system_clock::time_point now = std::chrono::system_clock::now();
    /// What it is shown on.
    SceneTraits device = {};
    /// Fetches an image; empty: none is fetched, and nothing is said of them.
    std::function<FetchedImage(const URL&)> fetchImage = {};
};

/// The files of a run by the scopes of their campaigns.
using ScopesInUse = std::map<std::string, std::string>;

/// One campaign in its run, as a rule looks at it.
struct CheckedCampaign {
    const Campaign& campaign;
    /// What the device draws of it.
    const Picture& picture;
    /// Of the campaigns that come before it.
    const ScopesInUse& scopesInUse;
    const CheckOptions& options;
    /// Absent when there is none to fetch.
    std::optional<FetchedImage> image = {};

    const VantixInAppMessagePayload& message() const { return *campaign.message; }
};

/// What a rule answers where it finds something.
struct Objection {
    /// A JSON pointer.
    std::string place;
    std::string message;
    std::string instead;
};

using Objections = std::vector<Objection>;

/// Nobody mends more of a kind one by one: a rule need not look for the rest.
inline constexpr std::size_t mostObjections = 100;

/// What may be wrong with a campaign.
struct Rule {
    std::string_view code;
    Severity severity;
    /// When it is found, in words.
    std::string_view foundWhen;
    Objections (*question)(const CheckedCampaign&);
    /// Whether what it finds explains what other rules find at the same place and within: a value that cannot be read
    /// as it is written, so that the rest is no mistake of its own.
    bool explains = false;
};

}  // namespace vantix
