#include "DeclarativeUI/Elements/GeometryReader.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"

namespace vantix {

namespace {

class GeometryReaderElement final : public Element {
public:
    explicit GeometryReaderElement(std::function<View(const GeometryProxy&)> content) : content_(std::move(content)) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        return {proposal.width.value_or(0), proposal.height.value_or(0)};
    }

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        GeometryProxy proxy{frame.size, pass.traits().safeArea};
        const View& content = pass.memory().content(*this, frame.size, [&] { return content_(proxy); });
        placeAligned(content, frame, Proposal::of(frame.size), Alignment::topLeading(), environment, pass);
    }

private:
    std::function<View(const GeometryProxy&)> content_;
};

}  // namespace

View GeometryReader(std::function<View(const GeometryProxy&)> content) {
    return View(std::make_shared<const GeometryReaderElement>(std::move(content)));
}

}  // namespace vantix
