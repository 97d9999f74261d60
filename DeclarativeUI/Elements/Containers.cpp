#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"

namespace vantix {

namespace {

class ScrollElement final : public Element {
public:
    explicit ScrollElement(View content) : content_(std::move(content)) {}

    /// As large as is offered; as large as the content along an open axis.
    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size content = pass.measure(content_, {proposal.width, {}}, environment);
        return {proposal.width.value_or(content.width), proposal.height.value_or(content.height)};
    }

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        Proposal openHeight{frame.size.width, {}};
        Size content = pass.measure(content_, openHeight, environment);
        double offset = pass.scrollOffset(frame, content.height - frame.size.height);
        pass.pushClip(frame, 0);
        double left =
            frame.minX() + leadingOffset(HorizontalAlignment::center, frame.size.width, content.width, environment);
        pass.place(content_, {{left, frame.minY() - offset}, content}, openHeight, environment);
        pass.popClip();
    }

private:
    View content_;
};

class GeometryReaderElement final : public Element {
public:
    explicit GeometryReaderElement(std::function<View(const GeometryProxy&)> content) : content_(std::move(content)) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        return {proposal.width.value_or(0), proposal.height.value_or(0)};
    }

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        GeometryProxy proxy{frame.size, pass.traits().safeArea};
        const View& content = pass.geometryContent(*this, frame.size, [&] { return content_(proxy); });
        placeAligned(content, frame, Proposal::of(frame.size), {HorizontalAlignment::leading, VerticalAlignment::top},
                     environment, pass);
    }

private:
    std::function<View(const GeometryProxy&)> content_;
};

}  // namespace

View ScrollView(View content) {
    if (content.isEmpty()) return {};
    return View(std::make_shared<const ScrollElement>(std::move(content)));
}

View GeometryReader(std::function<View(const GeometryProxy&)> content) {
    return View(std::make_shared<const GeometryReaderElement>(std::move(content)));
}

}  // namespace vantix
