#include "VantixInAppMessage/templates/MessageBlocks.h"

#include "DeclarativeUI/Elements/Text.h"

namespace vantix {

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

bool actsOnTap(const ViewModel& viewModel) { return viewModel->numberOfCTAs() > 0; }

View dialog(const View& card, const ViewModel& viewModel) {
    return card.accessibleKind(AccessibleKind::dialog)
        .accessibleName(viewModel->hasTitle() ? viewModel->getTitle() : viewModel->getMessage())
        .actsOnTap(actsOnTap(viewModel))
        .element(Role::card);
}

View imageBlock(const VantixImageView& image) { return image.body().padding(Edge::top).frame({.maxWidth = infinity}); }

}  // namespace vantix
