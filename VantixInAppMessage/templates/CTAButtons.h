#pragma once

#include "VantixInAppMessage/templates/MessageBlocks.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// A button as wide as its text: background, text and rounded corners, centred between vertical paddings.
View compactButton(const std::string& title, std::optional<Color> textColor, const Font& font,
                   std::optional<Color> background, double cornerRadius, std::function<void()> action);

/// A compact button for each call to action, in order; each acts with its own call to action. One without a text is a
/// programming error and stops the process.
std::vector<View> ctaButtons(const ViewModel& viewModel, double cornerRadius,
                             const std::function<void(const InAppCTA&)>& action);

}  // namespace vantix
