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
    static constexpr double imageCornerRadius = 10;
    static constexpr double buttonCornerRadius = 5;
    static constexpr double popupCornerRadius = 5;

    explicit FeedbackInAppMessageView(ViewModel inAppMessageViewModel) : viewModel_(std::move(inAppMessageViewModel)) {}

    View body() const;

private:
    View image() const;
    View titleRow() const;
    View message() const;
    View optionList() const;
    View singleSelectionFeedbackView() const;
    View multipleSelectionFeedbackView() const;
    View options(ButtonType type, View (*mark)(bool)) const;
    View buttons() const;

    ViewModel viewModel_;
    State<std::optional<std::string>> selectedFeedback_;
    /// In the order of ticking.
    State<std::optional<std::vector<std::string>>> selectionFeedbackOptions_;
};

}  // namespace vantix
