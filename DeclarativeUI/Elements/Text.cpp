#include "DeclarativeUI/Elements/Text.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

#include <algorithm>

namespace vantix {

namespace {

/// Bytes. Nobody reads more, and laying more out would hold up the main thread.
constexpr std::size_t longestText = 16 * 1024;

/// The text, or as many whole characters of it as are shown and an ellipsis.
std::string shortened(std::string text) {
    if (text.size() <= longestText) return text;
    std::size_t end = longestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    text.resize(end);
    return text + "…";
}

class TextElement final : public Element {
public:
    explicit TextElement(std::string text) : text_(std::move(text)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        const TextLayout& layout = pass.layOut(*this, text_, environment, proposal);
        // A letter may be wider than what is offered; it does not widen what stands around it.
        double width = std::min(layout.size.width, proposal.width.value_or(infinity));
        return {pass.grid().roundedUp(width), pass.grid().roundedUp(layout.size.height)};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        Font font = pass.drawnFont(environment.font);
        Color color = environment.drawnColor();
        pass.elements().show({.role = Role::text, .label = text_, .frame = frame, .textColor = color, .font = font});

        const TextLayout& layout = pass.layOut(*this, text_, environment, proposal);
        double top = frame.minY();
        for (const TextLine& line : layout.lines) {
            Rect lineFrame{{frame.minX(), top}, {frame.size.width, layout.lineHeight}};
            top += layout.lineHeight;
            if (line.text.empty() || !pass.clips().isVisible(lineFrame)) continue;
            double left = frame.minX() + offset(frame.size.width - line.width, environment);
            pass.draw(DrawText{{left, lineFrame.minY() + layout.ascent}, line.text, font, color, layout.rightToLeft});
        }
    }

private:
    static double offset(double rest, const Environment& environment) {
        if (environment.textAlignment == TextAlignment::center) return rest / 2;
        bool isAtLeft = (environment.textAlignment == TextAlignment::leading) != environment.isRightToLeft();
        return isAtLeft ? 0 : rest;
    }

    std::string text_;
};

}  // namespace

View Text(std::string text) { return View(std::make_shared<const TextElement>(shortened(std::move(text)))); }

}  // namespace vantix
