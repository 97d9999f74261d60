#pragma once

#include "DeclarativeUI/View.h"
#include "VantixCore/VantixImageView.h"
#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"

#include <memory>
#include <optional>
#include <string>

namespace vantix {

using ViewModel = std::shared_ptr<InAppMessageViewModel>;

/// A text with its colour and font, its lines centred, over the full width, on a background of its own.
View centredText(const std::string& text, std::optional<Color> color, const Font& font,
                 std::optional<Color> background);

/// The title as popup-like cards show it; empty when the message has none.
View titleBlock(const ViewModel& viewModel);

/// Whether a tap on the message itself does anything: whether it has a call to action.
bool actsOnTap(const ViewModel& viewModel);
/// A painted card as a dialog that is called by the message's title, or by its text.
View dialog(const View& card, const ViewModel& viewModel);
/// An image over the full width.
View imageBlock(const VantixImageView& image);

}  // namespace vantix
