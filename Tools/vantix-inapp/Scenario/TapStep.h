#pragma once

#include "Tools/vantix-inapp/Scenario/Step.h"

namespace vantix {

struct StepSource;

/// Throws BadInput.
Step readTap(const StepSource& source);

}  // namespace vantix
