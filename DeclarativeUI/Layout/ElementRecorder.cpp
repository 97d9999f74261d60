#include "DeclarativeUI/Layout/ElementRecorder.h"

#include "DeclarativeUI/Layout/Layers.h"

#include <map>
#include <utility>

namespace vantix {

namespace {

std::string spokenKind(const AccessibleElement& element) {
    bool actsAsButton = element.isEnabled && (element.role == Role::image || isContainer(element.role));
    if (element.role == Role::button || element.role == Role::close || actsAsButton) return ", button";
    return element.role == Role::image ? ", image" : "";
}

std::string spoken(const AccessibleElement& element) {
    std::string text = (element.role == Role::card ? "Message" : element.label) + spokenKind(element);
    if (element.selected) text += *element.selected ? ", selected" : ", not selected";
    return text;
}

}  // namespace

void ElementRecorder::begin(const Element& layer, Role role, const std::string& label, const Rect& frame) {
    if (role == Role::card) recorded_.cards.push_back(clips_.visiblePart(frame));
    open(describedElement(layer, role, label, frame), layer);
    claimTouches(layer, openElements_.back().position);
}

void ElementRecorder::show(const AccessibleElement& shown) {
    AccessibleElement* enclosing = openElements_.empty() ? nullptr : &elementAt(openElements_.back().position);
    if (!enclosing || isContainer(enclosing->role)) {
        if (shown.role == Role::text) recorded_.elements.push_back(shown);
        return;
    }
    if (!shown.label.empty() && openElements_.back().collectsTexts) {
        enclosing->label += (enclosing->label.empty() ? "" : " ") + shown.label;
    }
    if (!enclosing->textColor) enclosing->textColor = shown.textColor;
    if (!enclosing->font) enclosing->font = shown.font;
}

void ElementRecorder::beginControl(const Element& outermost, const Control& control, const Rect& frame) {
    bool isElement = control.role && !outermost.touchedElement();
    openControls_.push_back({&control, clips_.visiblePart(frame), isElement});
    if (isElement) open(describedElement(outermost, *control.role, {}, frame), outermost);
}

void ElementRecorder::endControl() {
    if (openControls_.back().isElement) end();
    openControls_.pop_back();
}

bool ElementRecorder::isPlacing(const Control& control) const {
    return !openControls_.empty() && openControls_.back().control == &control;
}

void ElementRecorder::addControl(const Element& layer) {
    const auto& [control, reach, isElement] = openControls_.back();
    addTouchRegion(layer, reach, control->action);
}

void ElementRecorder::addGesture(const Element& gesture, const Rect& area, std::function<void()> action) {
    addTouchRegion(gesture, clips_.visiblePart(area), std::move(action));
}

RecordedElements ElementRecorder::finish() {
    for (const TouchRegion& region : recorded_.touchRegions) {
        if (region.element >= 0) elementAt(region.element).isEnabled = true;
    }
    std::map<Role, int> counts;
    for (AccessibleElement& element : recorded_.elements) {
        element.index = counts[element.role]++;
        if (element.spokenText.empty()) element.spokenText = spoken(element);
    }
    return std::exchange(recorded_, {});
}

void ElementRecorder::open(AccessibleElement element, const Element& outermost) {
    int position = static_cast<int>(recorded_.elements.size());
    openElements_.push_back({position, &outermost, element.label.empty()});
    recorded_.elements.push_back(std::move(element));
}

AccessibleElement& ElementRecorder::elementAt(int position) {
    return recorded_.elements[static_cast<std::size_t>(position)];
}

void ElementRecorder::addTouchRegion(const Element& layer, const Rect& area, std::function<void()> action) {
    TouchRegion region{area, std::move(action), -1, layer.touchedElement()};
    if (!region.owner && !openElements_.empty() && isLayerOf(*openElements_.back().outermost, layer)) {
        region.element = openElements_.back().position;
    }
    recorded_.touchRegions.push_back(std::move(region));
}

/// The touches that mean an element were claimed by the layers right outside it.
void ElementRecorder::claimTouches(const Element& owner, int position) {
    auto& regions = recorded_.touchRegions;
    for (auto region = regions.rbegin(); region != regions.rend(); ++region) {
        if (region->owner != &owner || region->element >= 0) break;
        region->element = position;
    }
}

}  // namespace vantix
