#pragma once

#include <string>

namespace vantix {

/// The answer of the events API that a text stands for: a list of campaigns is sent within a successful answer,
/// anything else as it stands. Throws BadInput when something in the list is no campaign.
std::string eventsAnswer(const std::string& triggers);

}  // namespace vantix
