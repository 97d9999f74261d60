#pragma once

#include <string>
#include <vector>

namespace vantix {

struct SimulateArguments {
    std::vector<std::string> campaigns;
};

/// A phone in a window, with these campaigns at hand, until the window is closed or the process is asked to end. What
/// happens is printed, too, one JSON object a line. Throws BadInput; without a display the process ends with status 2.
void simulate(const SimulateArguments& arguments);

}  // namespace vantix
