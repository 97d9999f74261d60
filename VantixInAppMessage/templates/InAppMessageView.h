#pragma once

#include "DeclarativeUI/View.h"
#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// The root view of a shown message: makes its view model and the template of its type, and keeps both as long as it
/// lives, so that what the person chose survives every redraw.
class InAppMessageView {
public:
    InAppMessageView(SharedPayload inAppMessage, std::shared_ptr<InAppMessageActions> displayManager);

    View body() const;

    const std::shared_ptr<InAppMessageViewModel>& viewModel() const { return viewModel_; }

private:
    std::shared_ptr<InAppMessageViewModel> viewModel_;
    std::function<View()> template_;
    /// Absent where no text has a direction, which leaves it to the surroundings.
    std::optional<LayoutDirection> layoutDirection_;
    std::optional<std::string> language_;
};

}  // namespace vantix
