#include "VantixInAppMessage/templates/SelectionRow.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Divider.h"
#include "DeclarativeUI/Elements/Stacks.h"

namespace vantix {

View selectionRow(AccessibleKind kind, const View& mark, const View& label, bool isSelected, bool shouldAddDivider,
                  std::function<void()> action) {
    View content = HStack({mark, label.frame({.maxWidth = infinity, .alignment = Alignment::leading()})});
    View divider = shouldAddDivider ? Divider().background(Color::black()).element(Role::divider) : View();
    return VStack({PlainButton(std::move(action), content.padding())
                       .selected(isSelected)
                       .accessibleKind(kind)
                       .element(Role::option)
                       .overlay(Alignment::bottom(), divider)});
}

}  // namespace vantix
