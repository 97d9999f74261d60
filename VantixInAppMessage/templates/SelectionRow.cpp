#include "VantixInAppMessage/templates/SelectionRow.h"

namespace vantix {

View selectionRow(const View& mark, const View& label, bool isSelected, bool shouldAddDivider,
                  std::function<void()> action) {
    View row =
        HStack({PlainButton(std::move(action),
                            HStack({mark, label.frame({.maxWidth = infinity, .alignment = Alignment::leading()})}))
                    .selected(isSelected)
                    .element(Role::option)
                    .padding(Edge::horizontal)
                    .padding(Edge::bottom)});
    View divider = shouldAddDivider ? Divider().background(Color::black()).element(Role::divider) : View();
    return VStack(HorizontalAlignment::leading, {row, divider});
}

}  // namespace vantix
