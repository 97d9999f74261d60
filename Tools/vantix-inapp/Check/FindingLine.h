#pragma once

#include "CampaignCheck/Rules/Finding.h"
#include "Platform/Values/Value.h"

#include <string>

namespace vantix {

/// "error", "warning".
std::string severityWord(Severity severity);

/// The finding in one line, for people.
std::string textOf(const Finding& finding);
/// The same for programs.
Dictionary objectOf(const Finding& finding);

}  // namespace vantix
