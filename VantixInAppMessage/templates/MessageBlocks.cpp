#include "VantixInAppMessage/templates/MessageBlocks.h"

#include "Platform/Values/FatalError.h"

#include <algorithm>

namespace vantix {

namespace {

constexpr double trailingPaddingCloseButton = 5;
constexpr double closeRowPadding = 5;

/// A call to action without a text is a programming error: decoding never leaves one so.
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

View centredText(const std::string& text, std::optional<Color> color, const Font& font,
                 std::optional<Color> background) {
    return Text(text)
        .foregroundColor(color)
        .font(font)
        .multilineTextAlignment(TextAlignment::center)
        .frame({.maxWidth = infinity})
        .background(background);
}

View titleBlock(const ViewModel& viewModel) {
    if (!viewModel->hasTitle()) return {};
    return centredText(viewModel->getTitle(), viewModel->titleTextColor(), viewModel->titleFont(),
                       viewModel->titleBackgroundColor())
        .element(Role::title)
        .padding(Edge::top);
}

View imageBlock(const ViewModel& viewModel, double cornerRadius, std::optional<Image> placeholder) {
    if (!viewModel->hasImage()) return {};
    return VantixImageView{.url = viewModel->getImageURL(),
                           .placeholder = placeholder,
                           .delegate = viewModel,
                           .cornerRadius = cornerRadius}
        .body()
        .padding(Edge::top)
        .frame({.maxWidth = infinity});
}

View compactButton(const std::string& title, std::optional<Color> textColor, const Font& font,
                   std::optional<Color> background, double cornerRadius, std::function<void()> action) {
    return Button(std::move(action), Text(title).padding())
        .background(background)
        .foregroundColor(textColor)
        .font(font)
        .cornerRadius(cornerRadius)
        .padding(Edge::vertical);
}

std::vector<std::string> drawnRows(std::vector<std::string> texts) {
    constexpr std::size_t mostRows = 200;
    constexpr std::size_t mostText = 16 * 1024;
    std::size_t rows = 0;
    std::size_t length = 0;
    while (rows < std::min(texts.size(), mostRows) && length <= mostText) length += texts[rows++].size();
    texts.resize(rows);
    return texts;
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

View closeRow(const View& closeButton) { return HStack(VerticalAlignment::top, {Spacer(), closeButton}); }

View popupCard(const ViewModel& viewModel, double cornerRadius, std::function<std::vector<View>()> rows,
               std::function<void()> onTap) {
    return GeometryReader([=](const GeometryProxy& area) {
        View close = CloseButton(VantixCloseButtonType::close, viewModel)
                         .body()
                         .padding(Edge::trailing, trailingPaddingCloseButton);
        View card = VStack(rows())
                        .frame({.maxWidth = infinity})
                        .background(viewModel->layoutBackgroundColor())
                        .cornerRadius(cornerRadius)
                        .element(Role::card);
        if (onTap) card = card.onTapGesture(onTap);
        card = card.padding().overlay(Alignment::topTrailing(),
                                      closeRow(close).padding(Edge::trailing | Edge::top, closeRowPadding));

        return ScrollView(card.frame({.width = area.size.width, .minHeight = area.size.height}))
            .frame({.width = area.size.width, .height = area.size.height});
    });
}

}  // namespace vantix
