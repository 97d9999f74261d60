#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <string>
#include <vector>

namespace vantix {

class Pace;

/// Why the module would not show the message of a push, or not as it is meant; in words for whoever wrote the
/// campaign. Fetches the image at the pace, so that it is in the cache when the message is drawn. A simulation is
/// running; the customer is who holds its phone.
std::vector<std::string> campaignFindings(const Dictionary& push, const VantixInAppMessagePayload& message,
                                          const std::string& customer, Pace& pace);

}  // namespace vantix
