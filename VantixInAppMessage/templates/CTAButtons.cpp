#include "VantixInAppMessage/templates/CTAButtons.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Text.h"
#include "Platform/Values/FatalError.h"
#include "VantixInAppMessage/templates/DrawnRows.h"

namespace vantix {

namespace {

std::vector<std::string> ctaTexts(const InAppMessageViewModel& viewModel) {
    std::vector<std::string> texts;
    for (int index = 0; index < viewModel.numberOfCTAs(); ++index) {
        auto cta = viewModel.getCTA(index);
        if (!cta->actionText) fatalError("Unexpectedly found nil while implicitly unwrapping an Optional value");
        texts.push_back(*cta->actionText);
    }
    return texts;
}

}  // namespace

View compactButton(const std::string& title, std::optional<Color> textColor, const Font& font,
                   std::optional<Color> background, double cornerRadius, std::function<void()> action) {
    return Button(std::move(action), Text(title).padding())
        .background(background)
        .foregroundColor(textColor)
        .font(font)
        .cornerRadius(cornerRadius)
        .padding(Edge::vertical);
}

std::vector<View> ctaButtons(const ViewModel& viewModel, double cornerRadius,
                             const std::function<void(const InAppCTA&)>& action) {
    std::vector<View> buttons;
    int drawn = static_cast<int>(drawnRows(ctaTexts(*viewModel)).size());
    for (int index = 0; index < drawn; ++index) {
        InAppCTA cta = *viewModel->getCTA(index);
        auto style = viewModel->getCTAStyle(index).value_or(InAppMessageComponentStyle());
        buttons.push_back(compactButton(*cta.actionText, style.textColor, style.getFont(), style.backgroundColor,
                                        cornerRadius, [action, cta] { action(cta); }));
    }
    return buttons;
}

}  // namespace vantix
