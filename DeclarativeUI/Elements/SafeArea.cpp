#include "DeclarativeUI/Elements/SafeArea.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

#include <cmath>
#include <utility>

namespace vantix {

namespace {

class IgnoresSafeAreaElement final : public WrapperElement {
public:
    IgnoresSafeAreaElement(const ElementPointer& content, Edge edges) : WrapperElement(content), edges_(edges) {}

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        Rect reached = expanded(frame, environment, pass);
        pass.place(content(), reached, Proposal::of(reached.size), environment);
    }

private:
    /// Reaches to the window's edge where the frame touches that of the safe area.
    Rect expanded(const Rect& frame, const Environment& environment, const LayoutPass& pass) const {
        Rect safe = pass.safeArea();
        Rect window = pass.window();
        auto reaches = [&](Edge edge, double frameEdge, double safeEdge) {
            return includes(edges_, edge) && std::abs(frameEdge - safeEdge) < pass.grid().pixel();
        };
        auto [leftEdge, rightEdge] = environment.isRightToLeft() ? std::pair(Edge::trailing, Edge::leading)
                                                                 : std::pair(Edge::leading, Edge::trailing);
        double left = reaches(leftEdge, frame.minX(), safe.minX()) ? window.minX() : frame.minX();
        double top = reaches(Edge::top, frame.minY(), safe.minY()) ? window.minY() : frame.minY();
        double right = reaches(rightEdge, frame.maxX(), safe.maxX()) ? window.maxX() : frame.maxX();
        double bottom = reaches(Edge::bottom, frame.maxY(), safe.maxY()) ? window.maxY() : frame.maxY();
        return {{left, top}, {right - left, bottom - top}};
    }

    Edge edges_;
};

}  // namespace

ElementPointer ignoringSafeArea(const ElementPointer& content, Edge edges) {
    return modified<IgnoresSafeAreaElement>(content, edges);
}

}  // namespace vantix
