#pragma once

#include "Tools/vantix-inapp/Headless/Configuration.h"
#include "Tools/vantix-inapp/Scenario/Step.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

struct Scenario {
    struct Line {
        /// From 1.
        int number;
        /// As it is written.
        std::string text;
        Step step;
    };

    std::string file;
    Configuration configuration;
    std::vector<Line> lines;

    /// The step of a line, with the address instead of each placeholder of a back end's. Throws BadInput when the step
    /// cannot be read that way.
    Step step(const Line& line, const std::string& backendAddress) const;
};

/// Reads a whole scenario, one JSON object a line; blank lines and lines that begin with # are skipped. Throws BadInput
/// ("FILE:LINE: what is wrong") at the first fault.
Scenario readScenario(const std::string& file, std::string_view text);

/// The same from a file; "-" is standard input.
Scenario readScenarioFile(const std::string& file);

}  // namespace vantix
