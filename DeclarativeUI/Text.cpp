#include "DeclarativeUI/Element.h"
#include "DeclarativeUI/LayoutPass.h"

#include <string>

namespace vantix {

namespace {

class TextElement final : public Element {
public:
    explicit TextElement(std::string text) : text_(std::move(text)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        const TextLayout& layout = pass.layOut(*this, text_, environment, proposal);
        return {pass.roundUpToPixel(layout.size.width), pass.roundUpToPixel(layout.size.height)};
    }

    void place(const Rect& frame, const Environment& environment, LayoutPass& pass) const override {
        Font font = pass.drawnFont(environment.font);
        Color color = environment.foregroundColor.value_or(Color::black());
        pass.show({.role = Role::text, .label = text_, .frame = frame, .textColor = color, .font = font});

        // In the lines in which it was measured.
        const TextLayout& layout =
            pass.layOut(*this, text_, environment, pass.answeredProposal(*this, frame.size, environment));
        double top = frame.minY();
        for (const TextLine& line : layout.lines) {
            Rect lineFrame{{frame.minX(), top}, {frame.size.width, layout.lineHeight}};
            top += layout.lineHeight;
            if (line.text.empty() || !pass.isVisible(lineFrame)) continue;
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

View Text(std::string text) { return View(std::make_shared<const TextElement>(std::move(text))); }

}  // namespace vantix
