#include "DeclarativeUI/Layout/Layers.h"

#include "DeclarativeUI/Layout/Announcement.h"

namespace vantix {

const Control* controlIn(const Element& outermost) {
    for (const Element* layer = &outermost; layer; layer = layer->wrapped()) {
        if (auto control = layer->control()) return control;
    }
    return nullptr;
}

bool isLayerOf(const Element& outermost, const Element& layer) {
    const Element* at = &outermost;
    while (at && at != &layer) at = at->wrapped();
    return at != nullptr;
}

AccessibleElement describedElement(const Element& outermost, Role role, const std::string& label, const Rect& frame) {
    AccessibleElement element;
    element.role = role;
    element.label = label;
    element.name = label;
    element.kind = usualKind(role);
    element.frame = frame;
    for (const Element* layer = &outermost; layer; layer = layer->wrapped()) layer->describe(element);
    return element;
}

}  // namespace vantix
