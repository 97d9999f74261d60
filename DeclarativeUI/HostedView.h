#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/DisplayList.h"
#include "DeclarativeUI/SpokenWords.h"
#include "DeclarativeUI/View.h"
#include "Platform/Ports/Application.h"
#include "Platform/Ports/OwningThread.h"
#include "Platform/Values/Export.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

class LayoutMemory;
class TextMeasurer;
struct SettledLayout;

/// A tree of views on its way to the screen: evaluates the root's body once per invalidation, lays it out, and answers
/// taps and scrolling from the same evaluated tree. View state and image loaders live here, so that they last as long
/// as the window and no redraw forgets them.
///
/// Main thread only. Created by the module, given to a window as its content, driven by the host: the host sets the
/// traits, installs `onNeedsDisplay`, calls `evaluate()` and paints `displayList()`.
class VANTIX_EXPORT HostedView : public WindowContent, public std::enable_shared_from_this<HostedView> {
public:
    /// `body` is called at each evaluation.
    explicit HostedView(std::function<View()> body);
    ~HostedView() override;

    /// Called when something changed since the last evaluation; at most once until `evaluate()` is called. The host
    /// answers with an evaluation on a later turn of the main queue, never within the call.
    void setOnNeedsDisplay(std::function<void()> handler);

    /// The surroundings to lay out in. A change invalidates.
    void setTraits(const SceneTraits& traits);

    /// What is said beside the texts, by language, instead of the words that are known here. The language is that of
    /// the texts, where the content tells it and the table has it, else that of the traits. Invalidates the layout.
    void setSpokenWords(SpokenWordTable words);

    /// Brings tree, layout and lists up to date; does nothing when nothing changed. Layout that settles in two steps (a
    /// measured size feeding back into the tree) asks for display again.
    /// The measurer is kept for later scrolling and must outlive this view.
    void evaluate(const TextMeasurer& measurer);

    /// Marks the tree as out of date and asks for display.
    void invalidate();
    /// Marks the layout alone as out of date and asks for display: something that the tree draws has changed, the tree
    /// has not.
    void setNeedsLayout();

    const DisplayList& displayList() const;
    const std::vector<AccessibleElement>& elements() const;

    /// What assistive technology reads and a keyboard walks (see AccessibleElement::isFocusable), in this order on
    /// every message: the card, title, image, message, options, stars, buttons, close control. Nothing that is passed
    /// over.
    std::vector<AccessibleElement> readingOrder() const;

    /// Does what a tap on the element does, in view or not; false, and nothing else, when it is gone or does nothing.
    bool activate(const ElementIdentity& element);
    /// Increases the value of an adjustable element by so many steps, decreases it for a negative number; false, and
    /// nothing else, when it is gone or has none.
    bool adjust(const ElementIdentity& element, int steps);

    /// Whether the content wants a touch at this point. A banner leaves what lies outside its card to the application;
    /// everything else covers the whole window.
    bool claimsTouch(Point point) const;
    /// The same as areas of the window: those that take touches, all others are the application's.
    std::vector<Rect> touchAreas() const;

    /// What a touch meets.
    struct TapResult {
        /// The innermost element under the touch that wants it, absent when nothing does.
        std::optional<AccessibleElement> element;
        /// What the tap does; call it at most once. Empty when nothing wants the tap.
        std::function<void()> action;
    };
    /// Finds what a tap at this point meets; changes nothing.
    TapResult hitTest(Point point) const;

    /// Where content scrolls: the whole window, without a range, when nothing does.
    struct ScrollArea {
        Rect viewport;
        /// How far the content is scrolled, and how far it can be.
        double offset = 0;
        double range = 0;
    };
    ScrollArea scrollArea() const;
    /// Moves the scrolled content; positive values show what lies further down. Bounded by the content.
    void scroll(double points);
    /// The same, to an offset.
    void scrollTo(double offset);
    /// Scrolls as little as brings an area of the window into the viewport, its upper end first.
    void reveal(const Rect& area);

    /// The object kept under `key` for the life of this view, made by `make` at first use.
    std::shared_ptr<void> object(const std::string& key, const std::function<std::shared_ptr<void>()>& make);

    /// The view whose body is being evaluated; absent outside evaluations.
    static HostedView* current();

private:
    void askForDisplay();
    void layOut();
    void tellSizes();

    OwningThread thread_;
    std::function<View()> body_;
    std::function<void()> onNeedsDisplay_;
    SceneTraits traits_;
    SpokenWordTable spokenWords_ = knownSpokenWords();
    const TextMeasurer* measurer_ = nullptr;

    View tree_;
    std::unique_ptr<LayoutMemory> memory_;
    std::unique_ptr<SettledLayout> settled_;
    double scrollOffset_ = 0;

    bool treeIsOutOfDate_ = true;
    bool layoutIsOutOfDate_ = true;
    bool hasAsked_ = false;
    bool hasBeenEvaluated_ = false;

    std::map<std::string, std::shared_ptr<void>> objects_;
    std::map<std::string, Size> toldSizes_;
};

/// Hosts one root view and keeps it, so that state in its fields lives as long as the window.
template <typename Root>
class HostingController final : public HostedView {
public:
    explicit HostingController(std::shared_ptr<Root> rootView)
        : HostedView([rootView] { return rootView->body(); }), rootView_(std::move(rootView)) {}

    const Root& rootView() const { return *rootView_; }

private:
    std::shared_ptr<Root> rootView_;
};

}  // namespace vantix
