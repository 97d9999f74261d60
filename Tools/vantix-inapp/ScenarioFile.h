#pragma once

#include "Tools/vantix-inapp/Configuration.h"
#include "Tools/vantix-inapp/Step.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

struct Scenario {
    struct Line {
        /// From 1.
        int number;
        Step step;
    };

    Configuration configuration;
    std::vector<Line> lines;
};

/// Reads a whole scenario, one JSON object a line; blank lines and lines that begin with # are skipped. Throws BadInput
/// ("FILE:LINE: what is wrong") at the first fault.
Scenario readScenario(const std::string& file, std::string_view text);

/// The same from a file; "-" is standard input.
Scenario readScenarioFile(const std::string& file);

}  // namespace vantix
