#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/DisplayList.h"
#include "DeclarativeUI/Layout/Element.h"
#include "Platform/Ports/Application.h"
#include "Platform/Ports/TextMeasurer.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vantix {

/// What layout has learnt of one evaluated tree; kept as long as the tree, so that scrolling measures nothing anew.
struct LayoutMemory {
    struct MeasureKey {
        const Element* element;
        const Environment* environment;
        Proposal proposal;

        bool operator==(const MeasureKey&) const = default;
    };
    struct MeasureKeyHash {
        std::size_t operator()(const MeasureKey& key) const;
    };

    std::unordered_map<MeasureKey, Size, MeasureKeyHash> sizes;
    /// For these the height of the proposal is open.
    std::unordered_map<MeasureKey, TextLayout, MeasureKeyHash> texts;
    std::map<std::pair<const Element*, const Environment*>, std::unique_ptr<const Environment>> environments;
    std::map<std::pair<const Element*, std::pair<double, double>>, View> geometryContents;
};

/// A place that wants touches.
struct TouchRegion {
    Rect area;
    std::function<void()> action;
    /// What will make it an element; null when nothing does.
    const SemanticElement* owner = nullptr;
    /// The position of its element among the settled ones; -1 when it belongs to none.
    int element = -1;
};

/// What a layout leads to.
struct SettledLayout {
    DisplayList displayList;
    std::vector<AccessibleElement> elements;
    /// In painting order.
    std::vector<TouchRegion> touchRegions;
    /// Their visible parts.
    std::vector<Rect> cards;
    bool passesTouchesOutsideCard = false;
    /// Where the scrolling area is, the window when there is none, and how far its content can move.
    Rect viewport;
    double scrollRange = 0;
    std::vector<std::function<void()>> afterLayout;
};

/// One layout of an evaluated tree: measures, places, and collects what is drawn and what can be met.
class LayoutPass {
public:
    LayoutPass(LayoutMemory& memory, const TextMeasurer& measurer, const SceneTraits& traits, double scrollOffset,
               std::function<void(const std::string&, Size, const std::function<void(Size)>&)> tellSize);

    SettledLayout run(const View& root);

    // For elements.

    Size measure(const View& view, const Proposal& proposal, const Environment& environment);
    void place(const View& view, const Rect& frame, const Proposal& proposal, const Environment& environment);
    /// The environment inside a modifier; the same object for the same question.
    const Environment& derive(const Element& modifier, const Environment& outer,
                              const std::function<void(Environment&)>& change);

    const SceneTraits& traits() const { return traits_; }
    /// The font as it is drawn here.
    Font drawnFont(const Font& font) const;
    /// The text of an element, broken for the width that is proposed to it.
    const TextLayout& layOut(const Element& element, const std::string& text, const Environment& environment,
                             const Proposal& proposal);
    double pixel() const { return 1 / traits_.scale; }
    double roundUpToPixel(double length) const;
    Rect safeArea() const;
    Rect window() const { return {{}, traits_.size}; }
    const View& geometryContent(const Element& reader, Size size, const std::function<View()>& make);

    template <typename Item>
    void draw(Item item) {
        settled_.displayList.emplace_back(std::move(item));
    }
    /// What clips leave of the frame.
    Rect visiblePart(const Rect& frame) const;
    bool isVisible(const Rect& frame) const;
    /// The radius to which this frame is being clipped, so that what fills it can be drawn round by itself.
    double cornerRadiusOf(const Rect& frame) const;
    void pushClip(const Rect& frame, double cornerRadius);
    void popClip();
    /// How far the content of this area is scrolled. Of several areas, the first whose content can move is the one that
    /// scrolls.
    double scrollOffset(const Rect& viewport, double range);
    void passTouchesOutsideCard() { settled_.passesTouchesOutsideCard = true; }
    /// Claims touches for the button that is being placed, as far as its layers reach.
    void addControl(const ButtonElement& button);
    /// Claims touches in this area. They mean the element that the gesture is a layer of.
    void addGesture(const Rect& area, std::function<void()> action, const Element& gesture);
    void beginElement(const SemanticElement& semantic, AccessibleElement element);
    void endElement() { openElements_.pop_back(); }
    /// Adds what a text or picture shows to the element that it stands in, or makes it an element of its own.
    void show(const AccessibleElement& shown);
    void tellSizeAfterLayout(const std::string& key, Size size, const std::function<void(Size)>& action);

private:
    int open(AccessibleElement element, const Element& outermost);
    void addTouchRegion(const Rect& area, std::function<void()> action, const Element& view);
    void placeControl(const Element& outermost, const ButtonElement& button, const Rect& frame,
                      const Proposal& proposal, const Environment& environment);

    LayoutMemory& memory_;
    const TextMeasurer& measurer_;
    const SceneTraits& traits_;
    double scrollOffset_;
    std::function<void(const std::string&, Size, const std::function<void(Size)>&)> tellSize_;

    SettledLayout settled_;
    struct Clip {
        Rect frame;
        double cornerRadius = 0;
        /// What remains visible inside this clip and those around it.
        Rect visible;
    };
    std::vector<Clip> clips_;
    struct OpenElement {
        int position = 0;
        const Element* outermost = nullptr;
        /// Whether the texts inside make up its label.
        bool collectsTexts = true;
    };
    /// The elements that are being placed, from the outermost.
    std::vector<OpenElement> openElements_;
    struct OpenButton {
        const ButtonElement* button = nullptr;
        Rect reach;
    };
    /// The button whose layers are being placed.
    OpenButton openButton_;
};

}  // namespace vantix
