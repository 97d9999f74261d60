#include "VantixQt/Windows/AccessibleContent.h"

#include "VantixQt/Drawing/QtConversions.h"

#include <algorithm>

namespace vantix::qt {

namespace {

bool isCard(const AccessibleElement& element) { return element.role == Role::card; }

}  // namespace

AccessibleContent::AccessibleContent(MessageSurface& surface, AccessibleHolder holder)
    : surface_(surface), holder_(std::move(holder)) {}

std::optional<AccessibleElement> AccessibleContent::card() const { return find({Role::card, 0}); }

std::vector<AccessibleElement> AccessibleContent::elements() const {
    auto elements = surface_.content().readingOrder();
    std::erase_if(elements, isCard);
    return elements;
}

std::optional<AccessibleElement> AccessibleContent::find(const ElementIdentity& identity) const {
    const auto& elements = surface_.content().elements();
    auto found = std::find_if(elements.begin(), elements.end(),
                              [&](const AccessibleElement& element) { return element.identity() == identity; });
    return found == elements.end() ? std::nullopt : std::optional(*found);
}

QRect AccessibleContent::frame(const AccessibleElement& element) const {
    return toQt(element.frame).toAlignedRect().translated(holder_.position());
}

QRect AccessibleContent::frame() const {
    if (auto shown = card(); shown && !blocksApplication()) return frame(*shown);
    const Size& size = surface_.traits().size;
    return QRectF(0, 0, size.width, size.height).toAlignedRect().translated(holder_.position());
}

bool AccessibleContent::isOutOfSight(const AccessibleElement& element) const {
    auto scrolled = surface_.content().scrollArea();
    return scrolled.range > 0 && element.role != Role::close &&
           !toQt(element.frame).intersects(toQt(scrolled.viewport));
}

std::optional<ElementIdentity> AccessibleContent::focused() const {
    return holder_.hasFocus() ? surface_.interaction().focused() : std::nullopt;
}

void AccessibleContent::focus(const ElementIdentity& identity) {
    holder_.takeFocus();
    surface_.interaction().setFocus(identity);
}

void AccessibleContent::activate(const ElementIdentity& identity) { surface_.content().activate(identity); }

void AccessibleContent::adjust(const ElementIdentity& identity, int steps) {
    if (steps != 0) surface_.content().adjust(identity, steps);
}

}  // namespace vantix::qt
