#pragma once

#include "Platform/Values/Value.h"

namespace vantix {

/// A JSON Schema (2020-12) of a campaign's file, made from the table of fields. It holds what the structure of a
/// campaign must be; what only the whole of a message shows (contrast, height, scopes of others) is left to the rules.
Dictionary campaignSchema();

}  // namespace vantix
