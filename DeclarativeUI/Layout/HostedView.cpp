#include "DeclarativeUI/HostedView.h"

#include "DeclarativeUI/Layout/Announcement.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Lengths.h"
#include "DeclarativeUI/Layout/PixelGrid.h"

#include <algorithm>
#include <utility>

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

/// The language of a BCP 47 tag.
std::string languageOf(const std::string& locale) { return locale.substr(0, locale.find_first_of("-_")); }

/// Surroundings with which layout can count, on the pixel grid.
SceneTraits countable(const SceneTraits& traits) {
    auto factor = [](double value) { return value > 0 ? std::clamp(value, 0.01, 100.0) : 1; };
    double scale = factor(traits.scale);
    PixelGrid grid(scale);
    SceneTraits counted = traits;
    counted.size = grid.settled(bounded(traits.size));
    counted.safeArea = grid.settled(bounded(traits.safeArea));
    counted.scale = scale;
    counted.textScale = factor(traits.textScale);
    return counted;
}

}  // namespace

HostedView::HostedView(std::function<View()> body)
    : body_(std::move(body)), memory_(std::make_unique<LayoutMemory>()), settled_(std::make_unique<SettledLayout>()) {}

HostedView::~HostedView() = default;

HostedView* HostedView::current() { return evaluatedView; }

void HostedView::setOnNeedsDisplay(std::function<void()> handler) { onNeedsDisplay_ = std::move(handler); }

void HostedView::setTraits(const SceneTraits& given) {
    thread_.assertCurrent("HostedView::setTraits");
    SceneTraits traits = countable(given);
    if (traits_ == traits) return;
    traits_ = traits;
    invalidate();
}

void HostedView::setSpokenWords(SpokenWordTable words) {
    thread_.assertCurrent("HostedView::setSpokenWords");
    spokenWords_ = std::move(words);
    setNeedsLayout();
}

void HostedView::invalidate() {
    thread_.assertCurrent("HostedView::invalidate");
    treeIsOutOfDate_ = true;
    setNeedsLayout();
}

void HostedView::setNeedsLayout() {
    thread_.assertCurrent("HostedView::setNeedsLayout");
    layoutIsOutOfDate_ = true;
    askForDisplay();
}

void HostedView::askForDisplay() {
    if (!hasBeenEvaluated_ || std::exchange(hasAsked_, true)) return;
    if (onNeedsDisplay_) onNeedsDisplay_();
}

void HostedView::evaluate(const TextMeasurer& measurer) {
    thread_.assertCurrent("HostedView::evaluate");
    if (!std::exchange(layoutIsOutOfDate_, false)) return;
    hasAsked_ = false;
    hasBeenEvaluated_ = true;
    measurer_ = &measurer;
    if (std::exchange(treeIsOutOfDate_, false)) {
        Evaluation evaluation(this);
        tree_ = body_();
        *memory_ = {};
    }
    memory_->forgetSizes();
    layOut();
}

void HostedView::layOut() {
    {
        Evaluation evaluation(this);
        *settled_ = LayoutPass(*memory_, *measurer_, traits_, scrollOffset_).run(tree_);
    }
    announce(settled_->recorded.elements,
             vantix::spokenWords(spokenWords_, settled_->language, languageOf(traits_.locale)));
    scrollOffset_ = std::min(scrollOffset_, settled_->scrollRange);
    tellSizes();
}

void HostedView::tellSizes() {
    for (const auto& [key, size, tell] : std::exchange(settled_->sizeReports, {})) {
        auto [told, isNew] = toldSizes_.try_emplace(key, size);
        if (isNew || !(std::exchange(told->second, size) == size)) tell(size);
    }
}

const DisplayList& HostedView::displayList() const { return settled_->displayList; }

const std::vector<AccessibleElement>& HostedView::elements() const { return settled_->recorded.elements; }

std::vector<Rect> HostedView::touchAreas() const {
    if (settled_->passesTouchesOutsideCard) return settled_->recorded.cards;
    return {{{}, traits_.size}};
}

bool HostedView::claimsTouch(Point point) const {
    if (!settled_->passesTouchesOutsideCard) return true;
    const auto& cards = settled_->recorded.cards;
    return std::any_of(cards.begin(), cards.end(), [&](const Rect& card) { return card.contains(point); });
}

HostedView::TapResult HostedView::hitTest(Point point) const {
    const auto& [elements, regions, adjustments, cards] = settled_->recorded;
    auto met = std::find_if(regions.rbegin(), regions.rend(),
                            [&](const TouchRegion& region) { return region.area.contains(point); });
    if (met == regions.rend()) return {};
    TapResult result;
    if (met->element >= 0) result.element = elements[static_cast<std::size_t>(met->element)];
    result.action = met->action;
    return result;
}

std::vector<AccessibleElement> HostedView::readingOrder() const { return inReadingOrder(elements()); }

bool HostedView::activate(const ElementIdentity& element) {
    thread_.assertCurrent("HostedView::activate");
    const auto& regions = settled_->recorded.touchRegions;
    auto met = std::find_if(regions.rbegin(), regions.rend(), [&](const TouchRegion& region) {
        if (region.element < 0) return false;
        const AccessibleElement& touched = elements()[static_cast<std::size_t>(region.element)];
        return touched.identity() == element && touched.isEnabled;
    });
    if (met == regions.rend()) return false;
    auto action = met->action;
    action();
    return true;
}

bool HostedView::adjust(const ElementIdentity& element, int steps) {
    thread_.assertCurrent("HostedView::adjust");
    for (const Adjustment& adjustment : settled_->recorded.adjustments) {
        if (adjustment.element != element) continue;
        auto adjustValue = adjustment.adjust;
        adjustValue(steps);
        return true;
    }
    return false;
}

HostedView::ScrollArea HostedView::scrollArea() const {
    return {settled_->viewport, scrollOffset_, settled_->scrollRange};
}

void HostedView::scroll(double points) { scrollTo(scrollOffset_ + bounded(points)); }

void HostedView::scrollTo(double points) {
    thread_.assertCurrent("HostedView::scroll");
    double offset = std::clamp(bounded(points), 0.0, settled_->scrollRange);
    if (offset == scrollOffset_ || !measurer_) return;
    scrollOffset_ = offset;
    layOut();
}

void HostedView::reveal(const Rect& area) {
    const Rect& viewport = settled_->viewport;
    double above = viewport.origin.y - area.origin.y;
    double below = area.maxY() - viewport.maxY();
    if (above > 0) {
        scroll(-above);
    } else if (below > 0) {
        scroll(std::min(below, -above));
    }
}

std::shared_ptr<void> HostedView::object(const std::string& key, const std::function<std::shared_ptr<void>()>& make) {
    auto& kept = objects_[key];
    if (!kept) kept = make();
    return kept;
}

}  // namespace vantix
