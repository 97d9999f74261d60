#include "DeclarativeUI/Elements/SymbolImage.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

#include <algorithm>
#include <map>
#include <string>

namespace vantix {

/// Made by the build from the drawings in Symbols.
const std::string* embeddedSymbol(std::string_view fileName);

namespace {

class SymbolElement final : public Element {
public:
    explicit SymbolElement(Image drawing) : drawing_(std::move(drawing)) {}

    /// Grows with the font, and no wider than what is offered.
    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        constexpr double sizeToFont = 1.25;
        double side = std::min(pass.grid().roundedUp(pass.drawnFont(environment.font).size * sizeToFont),
                               pass.grid().roundedDown(proposal.width.value_or(infinity)));
        return {side, side};
    }

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        Color tint = environment.drawnColor();
        pass.elements().show({.role = Role::image, .frame = frame, .textColor = tint});
        pass.draw(DrawImage{frame, drawing_, tint});
    }

private:
    Image drawing_;
};

}  // namespace

Image systemSymbol(std::string_view systemName) {
    static auto& drawings = *new std::map<std::string, Image, std::less<>>;
    auto known = drawings.find(systemName);
    if (known != drawings.end()) return known->second;
    auto drawing = embeddedSymbol(std::string(systemName) + ".svg");
    if (!drawing) return {};
    return drawings[std::string(systemName)] = vectorImage(*drawing);
}

View SymbolImage(Image drawing) {
    if (drawing.isNull()) return {};
    return View(std::make_shared<const SymbolElement>(std::move(drawing)));
}

View SymbolImage(std::string_view systemName) { return SymbolImage(systemSymbol(systemName)); }

}  // namespace vantix
