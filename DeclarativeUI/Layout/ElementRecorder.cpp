#include "DeclarativeUI/Layout/ElementRecorder.h"

#include "DeclarativeUI/Layout/Announcement.h"
#include "DeclarativeUI/Layout/Layers.h"
#include "DeclarativeUI/Layout/TouchTargets.h"

#include <utility>

namespace vantix {

void ElementRecorder::begin(const Element& layer, Role role, const std::string& label, const Rect& frame) {
    if (role == Role::card) recorded_.cards.push_back(clips_.visiblePart(frame));
    open(describedElement(layer, role, label, frame), layer);
    claimTouches(layer, openElements_.back().position);
}

void ElementRecorder::show(const AccessibleElement& shown) {
    AccessibleElement* enclosing = openElements_.empty() ? nullptr : &elementAt(openElements_.back().position);
    if (!enclosing || isContainer(enclosing->role)) {
        if (shown.role == Role::text) addText(shown);
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
    openControls_.push_back({&control, {frame, clips_.visible()}, isElement});
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
    addTouchRegion(gesture, {area, clips_.visible()}, std::move(action));
}

void ElementRecorder::addAdjustment(std::function<void(int)> adjust) {
    if (openElements_.empty()) return;
    recorded_.adjustments.push_back({elementAt(openElements_.back().position).identity(), std::move(adjust)});
}

RecordedElements ElementRecorder::finish() {
    std::vector<bool> isTouched(recorded_.elements.size());
    for (const TouchRegion& region : recorded_.touchRegions) {
        if (region.element >= 0) isTouched[static_cast<std::size_t>(region.element)] = true;
    }
    for (std::size_t at = 0; at < isTouched.size(); ++at)
        recorded_.elements[at].isEnabled = recorded_.elements[at].isEnabled && isTouched[at];
    spreadTargets(recorded_);
    counts_.clear();
    return std::exchange(recorded_, {});
}

void ElementRecorder::open(AccessibleElement element, const Element& outermost) {
    int position = static_cast<int>(recorded_.elements.size());
    bool collectsTexts = element.label.empty();
    add(std::move(element));
    openElements_.push_back({position, &outermost, collectsTexts});
}

void ElementRecorder::end() {
    const OpenElement& open = openElements_.back();
    AccessibleElement& element = elementAt(open.position);
    if (open.collectsTexts && element.name.empty()) element.name = element.label;
    openElements_.pop_back();
}

void ElementRecorder::add(AccessibleElement element) {
    element.index = counts_[element.role]++;
    for (auto around = openElements_.rbegin(); around != openElements_.rend() && !element.parent; ++around) {
        const AccessibleElement& holder = elementAt(around->position);
        if (isContainer(holder.role)) element.parent = holder.identity();
    }
    recorded_.elements.push_back(std::move(element));
}

void ElementRecorder::addText(AccessibleElement text) {
    text.kind = usualKind(text.role);
    text.name = text.label;
    add(std::move(text));
}

AccessibleElement& ElementRecorder::elementAt(int position) {
    return recorded_.elements[static_cast<std::size_t>(position)];
}

void ElementRecorder::addTouchRegion(const Element& layer, const Reach& reach, std::function<void()> action) {
    Rect area = reach.frame.intersection(reach.bounds);
    TouchRegion region{area, reach.frame, reach.bounds, std::move(action), -1, layer.touchedElement()};
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
