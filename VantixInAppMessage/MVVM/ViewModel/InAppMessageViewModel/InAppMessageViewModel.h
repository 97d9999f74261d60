#pragma once

#include "VantixCore/VantixImageView.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/InAppMessageActions.h"
#include "VantixInAppMessage/templates/CloseButtonProtocol.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// What every template reads its message from and reports the person's actions to. Absent colours are the templates' to
/// replace. The primary call to action is the first one. Main thread only.
class InAppMessageViewModel : public VantixImageViewProtocol, public CloseButtonProtocol {
public:
    /// Without a display manager actions do nothing. The message must not be null.
    InAppMessageViewModel(SharedPayload message, std::shared_ptr<InAppMessageActions> displayManager);

    const VantixInAppMessagePayload& inAppMessage() const { return *inAppMessage_; }

    virtual std::optional<URL> getImageURL() const;
    virtual bool hasImage() const;
    virtual bool hasTitle() const;
    virtual std::string getTitle() const;
    virtual Font titleFont() const;
    virtual std::optional<Color> titleBackgroundColor() const;
    virtual std::optional<Color> titleTextColor() const;
    virtual bool hasMessage() const;
    virtual std::string getMessage() const;
    virtual Font messageFont() const;
    virtual std::optional<Color> messageBackgroundColor() const;
    virtual std::optional<Color> messageTextColor() const;

    /// Logs when there is no call to action. One without a text stops the process; decoding never leaves one so.
    virtual bool hasPrimaryCTA() const;
    virtual std::optional<InAppCTA> getCTA(int index) const;
    virtual std::optional<InAppMessageComponentStyle> getCTAStyle(int index) const;
    virtual int numberOfCTAs() const;
    virtual std::string getPrimaryCTAButtonTitle() const;
    virtual Font ctaFont() const;
    virtual std::optional<Color> ctaBackgroundColor() const;
    virtual std::optional<Color> ctaTextColor() const;

    virtual std::optional<Color> layoutBackgroundColor() const;
    virtual std::optional<Color> starSelectedColor() const;
    virtual std::optional<Color> starNotSelectedColor() const;

    virtual void handlePrimaryCTAAction();
    /// The positions of the options that equal one of the selected texts, letter case aside, in the options' order.
    virtual std::optional<std::vector<int>> selectedFeedbackIndices(
        const std::optional<std::vector<std::string>>& selected) const;
    virtual void handleCTAAction(const InAppCTA& cta, std::optional<int> rating,
                                 const std::optional<std::string>& feedback,
                                 const std::optional<std::string>& feedbackOption,
                                 const std::optional<std::vector<std::string>>& feedbackOptions);
    virtual void handleCloseButtonAction();

    virtual bool feedbackOptionsAvailable() const;
    virtual InAppFeedbackSelectionType feedbackSelectionType() const;
    virtual std::vector<std::string> feedbackOptions() const;

    void didTapOnImage() override { handlePrimaryCTAAction(); }
    void handleClickAction() override { handleCloseButtonAction(); }

private:
    SharedPayload inAppMessage_;
    std::shared_ptr<InAppMessageActions> displayManager_;
};

}  // namespace vantix
