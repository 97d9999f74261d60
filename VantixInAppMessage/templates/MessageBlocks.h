#pragma once

#include "DeclarativeUI/View.h"
#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"
#include "VantixInAppMessage/templates/CloseButton.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

using ViewModel = std::shared_ptr<InAppMessageViewModel>;

/// Blocks that several templates draw alike.

/// The first of the texts, as many as are drawn as rows of their own: 200, and 16 KiB of text. More would hold up the
/// main thread and serve nobody.
std::vector<std::string> drawnRows(std::vector<std::string> texts);

/// A text with its colour and font, its lines centred, over the full width, on a background of its own.
View centredText(const std::string& text, std::optional<Color> color, const Font& font,
                 std::optional<Color> background);

/// The title as popup-like cards show it; empty when the message has none.
View titleBlock(const ViewModel& viewModel);

/// The message's image over the full width, with rounded corners; empty when the message has none.
View imageBlock(const ViewModel& viewModel, double cornerRadius, std::optional<Image> placeholder = {});

/// A compact button for each call to action, in order; each acts with its own call to action.
std::vector<View> ctaButtons(const ViewModel& viewModel, double cornerRadius,
                             const std::function<void(const InAppCTA&)>& action);

/// A button as wide as its text: background, text and rounded corners, centred between vertical paddings.
View compactButton(const std::string& title, std::optional<Color> textColor, const Font& font,
                   std::optional<Color> background, double cornerRadius, std::function<void()> action);

/// A close control at the trailing end of a row.
View closeRow(const View& closeButton);

/// A card that floats over the application, centred in the safe area, with a close control at its top-right corner;
/// scrolls when it is taller. `rows` is called once per evaluation. Without `onTap` a tap on the card is nothing.
View popupCard(const ViewModel& viewModel, double cornerRadius, std::function<std::vector<View>()> rows,
               std::function<void()> onTap = {});

}  // namespace vantix
