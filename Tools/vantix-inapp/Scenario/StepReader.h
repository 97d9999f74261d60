#pragma once

#include "Tools/vantix-inapp/Scenario/Step.h"

#include <filesystem>
#include <string_view>

namespace vantix {

/// Reads one line of a scenario that is not `configure`; `object` is its value. `folder` is that of the file. Throws
/// BadInput.
Step readStep(std::string_view line, const Dictionary& object, const std::filesystem::path& folder);

}  // namespace vantix
