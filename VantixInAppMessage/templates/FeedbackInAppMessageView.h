#pragma once

#include "DeclarativeUI/State.h"
#include "VantixInAppMessage/templates/ButtonGroup.h"
#include "VantixInAppMessage/templates/MessageBlocks.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// A card that asks to choose one option or several of a list, and to submit the choice with a button.
class FeedbackInAppMessageView {
public:
    explicit FeedbackInAppMessageView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    View titleRow() const;
    View messageBlock() const;
    View optionList() const;
    View singleSelectionFeedbackView() const;
    View multipleSelectionFeedbackView() const;
    View options(ButtonType type, View (*mark)(bool)) const;
    View buttons() const;

    ViewModel viewModel_;
    double imageCornerRadius_ = 10;
    double buttonCornerRadius_ = 5;
    double popupCornerRadius_ = 5;
    State<std::optional<std::string>> selectedFeedback_;
    /// In the order of ticking.
    State<std::optional<std::vector<std::string>>> selectionFeedbackOptions_;
};

}  // namespace vantix
