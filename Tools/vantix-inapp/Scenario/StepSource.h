#pragma once

#include "Platform/Values/Value.h"

#include <filesystem>
#include <string_view>

namespace vantix {

/// A step while it is read.
struct StepSource {
    /// The step's key, and the value under it.
    std::string_view key;
    const Value& value;
    /// The whole line, as value and as it is written.
    const Dictionary& object;
    std::string_view line;
    /// The folder of the file; what the step names is looked for there.
    const std::filesystem::path& folder;
};

}  // namespace vantix
