#include "DeclarativeUI/HostedView.h"

#include "DeclarativeUI/Elements/Semantics.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"

#include <algorithm>
#include <map>

namespace vantix {

namespace {

thread_local HostedView* evaluatedView = nullptr;

/// Makes a view the current one while its body runs.
class Evaluation {
public:
    explicit Evaluation(HostedView* view) : outer_(std::exchange(evaluatedView, view)) {}
    ~Evaluation() { evaluatedView = outer_; }
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;

private:
    HostedView* outer_;
};

/// Surroundings with which layout can count.
SceneTraits countable(const SceneTraits& traits) {
    auto factor = [](double value) { return value > 0 ? std::clamp(value, 0.01, 100.0) : 1; };
    return {bounded(traits.size), bounded(traits.safeArea), factor(traits.scale), factor(traits.textScale)};
}

}  // namespace

struct HostedView::Implementation {
    std::function<View()> body;
    std::function<void()> onNeedsDisplay;
    SceneTraits traits;
    const TextMeasurer* measurer = nullptr;

    View tree;
    LayoutMemory memory;
    SettledLayout settled;
    double scrollOffset = 0;

    bool treeIsOutOfDate = true;
    bool layoutIsOutOfDate = true;
    bool hasAsked = false;
    bool hasBeenEvaluated = false;

    std::map<std::string, std::shared_ptr<void>> objects;
    std::map<std::string, Size> toldSizes;
};

HostedView::HostedView(std::function<View()> body) : implementation_(std::make_unique<Implementation>()) {
    implementation_->body = std::move(body);
}

HostedView::~HostedView() = default;

HostedView* HostedView::current() { return evaluatedView; }

void HostedView::setOnNeedsDisplay(std::function<void()> handler) {
    implementation_->onNeedsDisplay = std::move(handler);
}

void HostedView::setTraits(const SceneTraits& given) {
    SceneTraits traits = countable(given);
    if (implementation_->traits == traits) return;
    implementation_->traits = traits;
    invalidate();
}

void HostedView::invalidate() {
    implementation_->treeIsOutOfDate = true;
    setNeedsLayout();
}

void HostedView::setNeedsLayout() {
    implementation_->layoutIsOutOfDate = true;
    askForDisplay();
}

void HostedView::askForDisplay() {
    if (!implementation_->hasBeenEvaluated || std::exchange(implementation_->hasAsked, true)) return;
    if (implementation_->onNeedsDisplay) implementation_->onNeedsDisplay();
}

void HostedView::evaluate(const TextMeasurer& measurer) {
    auto& all = *implementation_;
    if (!std::exchange(all.layoutIsOutOfDate, false)) return;
    all.hasAsked = false;
    all.hasBeenEvaluated = true;
    all.measurer = &measurer;
    if (std::exchange(all.treeIsOutOfDate, false)) {
        Evaluation evaluation(this);
        all.tree = all.body();
        all.memory = {};
    }
    all.memory.sizes.clear();
    layOut();
}

void HostedView::layOut() {
    auto& all = *implementation_;
    auto tellSize = [&all](const std::string& key, Size size, const std::function<void(Size)>& action) {
        auto [told, isNew] = all.toldSizes.try_emplace(key, size);
        if (isNew || !(std::exchange(told->second, size) == size)) action(size);
    };
    {
        Evaluation evaluation(this);
        LayoutPass pass(all.memory, *all.measurer, all.traits, all.scrollOffset, tellSize);
        all.settled = pass.run(all.tree);
    }
    all.scrollOffset = std::min(all.scrollOffset, all.settled.scrollRange);
    for (const auto& action : std::exchange(all.settled.afterLayout, {})) action();
}

bool HostedView::hasBeenEvaluated() const { return implementation_->hasBeenEvaluated; }

const DisplayList& HostedView::displayList() const { return implementation_->settled.displayList; }

const std::vector<AccessibleElement>& HostedView::elements() const { return implementation_->settled.elements; }

bool HostedView::claimsTouch(Point point) const {
    const auto& settled = implementation_->settled;
    if (!settled.passesTouchesOutsideCard) return true;
    return std::any_of(settled.cards.begin(), settled.cards.end(),
                       [&](const Rect& card) { return card.contains(point); });
}

HostedView::TapResult HostedView::hitTest(Point point) const {
    const auto& settled = implementation_->settled;
    auto met = std::find_if(settled.touchRegions.rbegin(), settled.touchRegions.rend(),
                            [&](const TouchRegion& region) { return region.area.contains(point); });
    if (met == settled.touchRegions.rend()) return {};
    TapResult result;
    if (met->element >= 0) result.element = settled.elements[static_cast<std::size_t>(met->element)];
    result.action = met->action;
    return result;
}

HostedView::TapResult HostedView::hitTest(const AccessibleElement& element) {
    const AccessibleElement* aimed = find(element);
    if (!aimed) return {};
    scrollIntoView(aimed->frame);
    if (!isContainer(element.role)) return hitTest(find(element)->frame.center());

    auto met = hitBesideControls(element);
    if (!met.action) scroll(-infinity);
    for (bool moves = true; !met.action && moves; moves = scrollByPage()) met = hitBesideControls(element);
    return met;
}

const AccessibleElement* HostedView::find(const AccessibleElement& element) const {
    const auto& elements = implementation_->settled.elements;
    auto found = std::find_if(elements.begin(), elements.end(), [&](const AccessibleElement& candidate) {
        return candidate.role == element.role && candidate.index == element.index;
    });
    return found == elements.end() ? nullptr : &*found;
}

HostedView::TapResult HostedView::hitBesideControls(const AccessibleElement& element) const {
    constexpr int steps = 32;
    constexpr double border = 1;
    Rect frame = intersection(find(element)->frame, implementation_->settled.viewport);
    frame = frame.inset({border, border, border, border});
    for (int row = 0; row <= steps; ++row) {
        for (int column = 0; column <= steps; ++column) {
            auto met = hitTest(Point{frame.minX() + frame.size.width * column / steps,
                                     frame.minY() + frame.size.height * row / steps});
            if (met.element && met.element->role == element.role && met.element->index == element.index) return met;
        }
    }
    return {};
}

bool HostedView::scrollByPage() {
    double before = implementation_->scrollOffset;
    scroll(implementation_->settled.viewport.size.height);
    return implementation_->scrollOffset > before;
}

void HostedView::scrollIntoView(const Rect& frame) {
    const Rect& viewport = implementation_->settled.viewport;
    double middle = frame.center().y;
    if (implementation_->settled.scrollRange == 0 || (middle >= viewport.minY() && middle < viewport.maxY())) return;
    scroll(middle - viewport.center().y);
}

void HostedView::scroll(double points) {
    auto& all = *implementation_;
    double offset = std::clamp(all.scrollOffset + bounded(points), 0.0, all.settled.scrollRange);
    if (offset == all.scrollOffset || !all.measurer) return;
    all.scrollOffset = offset;
    layOut();
}

std::shared_ptr<void> HostedView::object(const std::string& key, const std::function<std::shared_ptr<void>()>& make) {
    auto& kept = implementation_->objects[key];
    if (!kept) kept = make();
    return kept;
}

}  // namespace vantix
