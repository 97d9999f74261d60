#include "DeclarativeUI/Elements/ScrollView.h"

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

}  // namespace

View ScrollView(View content) {
    if (content.isEmpty()) return {};
    return View(std::make_shared<const ScrollElement>(std::move(content)));
}

}  // namespace vantix
