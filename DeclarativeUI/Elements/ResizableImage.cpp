#include "DeclarativeUI/Elements/ResizableImage.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

namespace {

class ResizableImageElement final : public Element {
public:
    explicit ResizableImageElement(Image image) : image_(std::move(image)) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        return {proposal.width.value_or(image_.naturalSize.width), proposal.height.value_or(image_.naturalSize.height)};
    }
    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        pass.draw(DrawImage{frame, image_, {}});
    }

private:
    Image image_;
};

}  // namespace

View ResizableImage(Image image) {
    if (image.isNull()) return {};
    return View(std::make_shared<const ResizableImageElement>(std::move(image)));
}

}  // namespace vantix
