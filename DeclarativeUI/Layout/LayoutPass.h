#pragma once

#include "DeclarativeUI/Layout/ClipStack.h"
#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/ElementRecorder.h"
#include "DeclarativeUI/Layout/LayoutMemory.h"
#include "DeclarativeUI/Layout/PixelGrid.h"
#include "DeclarativeUI/Layout/SettledLayout.h"
#include "Platform/Ports/Application.h"
#include "Platform/Ports/TextMeasurer.h"

#include <string>
#include <utility>

namespace vantix {

/// One layout of an evaluated tree: measures, places, and collects what is drawn and what can be met. What it is given
/// outlives it.
class LayoutPass {
public:
    LayoutPass(LayoutMemory& memory, const TextMeasurer& measurer, const SceneTraits& traits, double scrollOffset);

    /// Once.
    SettledLayout run(const ElementPointer& root);

    // For elements.

    Size measure(const ElementPointer& view, const Proposal& proposal, const Environment& environment);
    void place(const ElementPointer& view, const Rect& frame, const Proposal& proposal, const Environment& environment);

    LayoutMemory& memory() { return memory_; }
    ElementRecorder& elements() { return elements_; }
    const ClipStack& clips() const { return clips_; }

    const SceneTraits& traits() const { return traits_; }
    Rect window() const { return {{}, traits_.size}; }
    Rect safeArea() const { return window().inset(traits_.safeArea); }
    /// Sizes and frames are settled on it by `measure` and `place`; for lengths of an element's own.
    const PixelGrid& grid() const { return grid_; }

    /// The font as it is drawn here.
    Font drawnFont(const Font& font) const;
    /// The text of an element, broken for the width that is proposed to it.
    const TextLayout& layOut(const Element& element, const std::string& text, const Environment& environment,
                             const Proposal& proposal);

    template <typename Item>
    void draw(Item item) {
        settled_.displayList.emplace_back(std::move(item));
    }
    /// Clips what is drawn and met until `popClip`.
    void pushClip(const Rect& frame, double cornerRadius);
    void popClip();
    /// How far the content of this area is scrolled. Of several areas, the first whose content can move is the one that
    /// scrolls.
    double scrollOffset(const Rect& viewport, double range);
    /// Tells the language of the texts.
    void setLanguage(const std::string& language) { settled_.language = language; }
    void passTouchesOutsideCard() { settled_.passesTouchesOutsideCard = true; }
    void reportSize(SizeReport report) { settled_.sizeReports.push_back(std::move(report)); }

private:
    LayoutMemory& memory_;
    const TextMeasurer& measurer_;
    const SceneTraits& traits_;
    PixelGrid grid_;
    double scrollOffset_;
    SettledLayout settled_;
    ClipStack clips_;
    ElementRecorder elements_;
};

}  // namespace vantix
