#pragma once

#include "Platform/Values/Value.h"

namespace vantix {

/// The campaigns of the gallery (docs/campaigns), one of each kind first.
List exampleCampaigns();

}  // namespace vantix
