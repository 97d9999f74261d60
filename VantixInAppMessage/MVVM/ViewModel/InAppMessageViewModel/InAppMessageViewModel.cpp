#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"

#include "Platform/Ports/MainThread.h"
#include "Platform/Values/CaseFolding.h"
#include "Platform/Values/FatalError.h"
#include "VantixCore/VantixLogger.h"

#include <set>

namespace vantix {

namespace {

constexpr LogSource log{"MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel"};

template <typename Element>
std::optional<Element> elementAt(const std::vector<Element>& list, int index) {
    auto at = static_cast<std::size_t>(index);
    return at < list.size() ? std::optional(list[at]) : std::nullopt;
}

void logMissingPrimaryCTA(const char* function) { log.error(function, "Did not find primary CTA"); }

}  // namespace

InAppMessageViewModel::InAppMessageViewModel(SharedPayload message, std::shared_ptr<InAppMessageActions> displayManager)
    : inAppMessage_(std::move(message)), displayManager_(std::move(displayManager)) {}

std::optional<URL> InAppMessageViewModel::getImageURL() const { return inAppMessage_->getImageURL(); }

bool InAppMessageViewModel::hasImage() const { return !inAppMessage_->body.image.empty(); }

bool InAppMessageViewModel::hasTitle() const { return !inAppMessage_->body.title.empty(); }

std::string InAppMessageViewModel::getTitle() const { return inAppMessage_->body.title; }

Font InAppMessageViewModel::titleFont() const { return inAppMessage_->style.title.getFont(); }

std::optional<Color> InAppMessageViewModel::titleBackgroundColor() const {
    return inAppMessage_->style.title.backgroundColor;
}

std::optional<Color> InAppMessageViewModel::titleTextColor() const { return inAppMessage_->style.title.textColor; }

bool InAppMessageViewModel::hasMessage() const { return !inAppMessage_->body.message.empty(); }

std::string InAppMessageViewModel::getMessage() const { return inAppMessage_->body.message; }

Font InAppMessageViewModel::messageFont() const { return inAppMessage_->style.message.getFont(); }

std::optional<Color> InAppMessageViewModel::messageBackgroundColor() const {
    return inAppMessage_->style.message.backgroundColor;
}

std::optional<Color> InAppMessageViewModel::messageTextColor() const { return inAppMessage_->style.message.textColor; }

bool InAppMessageViewModel::hasPrimaryCTA() const {
    auto primary = getCTA(0);
    if (!primary) {
        logMissingPrimaryCTA("hasPrimaryCTA()");
        return false;
    }
    if (!primary->actionText) fatalError("Unexpectedly found nil while implicitly unwrapping an Optional value");
    return !primary->actionText->empty();
}

std::optional<InAppCTA> InAppMessageViewModel::getCTA(int index) const {
    return elementAt(inAppMessage_->body.ctas, index);
}

std::optional<InAppMessageComponentStyle> InAppMessageViewModel::getCTAStyle(int index) const {
    return elementAt(inAppMessage_->style.ctas, index);
}

int InAppMessageViewModel::numberOfCTAs() const { return static_cast<int>(inAppMessage_->body.ctas.size()); }

std::string InAppMessageViewModel::getPrimaryCTAButtonTitle() const {
    auto primary = getCTA(0);
    return primary ? primary->actionText.value_or("") : "";
}

Font InAppMessageViewModel::ctaFont() const {
    auto style = getCTAStyle(0);
    if (!style) {
        logMissingPrimaryCTA("ctaFont()");
        return Font::system(16);
    }
    return style->getFont();
}

std::optional<Color> InAppMessageViewModel::ctaBackgroundColor() const {
    auto style = getCTAStyle(0);
    return style ? style->backgroundColor : std::nullopt;
}

std::optional<Color> InAppMessageViewModel::ctaTextColor() const {
    auto style = getCTAStyle(0);
    return style ? style->textColor : std::nullopt;
}

std::optional<Color> InAppMessageViewModel::layoutBackgroundColor() const {
    return inAppMessage_->style.layoutBackgroundColor;
}

std::optional<Color> InAppMessageViewModel::starSelectedColor() const {
    return inAppMessage_->style.rating.selectedColor;
}

std::optional<Color> InAppMessageViewModel::starNotSelectedColor() const {
    return inAppMessage_->style.rating.unselectedColor;
}

void InAppMessageViewModel::handlePrimaryCTAAction() {
    auto primary = getCTA(0);
    if (!primary) return logMissingPrimaryCTA("handlePrimaryCTAAction()");
    handleCTAAction(*primary, {}, {}, {}, {});
}

std::optional<std::vector<int>> InAppMessageViewModel::selectedFeedbackIndices(
    const std::optional<std::vector<std::string>>& selected) const {
    if (!selected) return {};
    std::set<std::string> wanted;
    for (const std::string& text : *selected) wanted.insert(foldCase(text));

    std::vector<int> indices;
    const auto& options = inAppMessage_->body.feedback.options;
    for (std::size_t at = 0; at < options.size(); ++at) {
        if (wanted.contains(foldCase(options[at]))) indices.push_back(static_cast<int>(at));
    }
    return indices;
}

void InAppMessageViewModel::handleCTAAction(const InAppCTA& cta, std::optional<int> rating,
                                            const std::optional<std::string>& feedback,
                                            const std::optional<std::string>& feedbackOption,
                                            const std::optional<std::vector<std::string>>& feedbackOptions) {
    auto indices = feedbackOption ? selectedFeedbackIndices(std::vector{*feedbackOption})
                                  : selectedFeedbackIndices(feedbackOptions);
    assertMainThread("handleCTAAction(for:rating:feedback:feedbackOption:feedbackOptions:)");
    if (displayManager_) {
        displayManager_->handleInAppMessageButtonAction(inAppMessage_, cta, rating, feedback, indices);
    }
}

void InAppMessageViewModel::handleCloseButtonAction() {
    assertMainThread("handleCloseButtonAction()");
    if (displayManager_) displayManager_->dismissInAppMessage(inAppMessage_, true);
}

bool InAppMessageViewModel::feedbackOptionsAvailable() const { return !inAppMessage_->body.feedback.options.empty(); }

InAppFeedbackSelectionType InAppMessageViewModel::feedbackSelectionType() const {
    return inAppMessage_->body.feedback.selectionType;
}

std::vector<std::string> InAppMessageViewModel::feedbackOptions() const { return inAppMessage_->body.feedback.options; }

}  // namespace vantix
