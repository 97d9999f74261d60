#include "DeclarativeUI/Elements/SourcedImage.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

class SourcedImageElement final : public Element {
public:
    SourcedImageElement(std::shared_ptr<ImageSource> source, std::optional<double> aspectRatio, double cornerRadius)
        : source_(std::move(source)), aspectRatio_(aspectRatio), cornerRadius_(cornerRadius) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass& pass) const override {
        double width = proposal.width.value_or(source_->currentImage().naturalSize.width);
        double height = ratio() > 0 ? width / ratio() : 0;
        return {width, proposal.height.value_or(pass.grid().roundedUp(height))};
    }

    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        Rect fitted = pass.grid().settled(fittedInto(frame));
        source_->needed(pixels(fitted.size.width, pass), pixels(fitted.size.height, pass));
        Image image = source_->currentImage();
        if (image.isNull() || !pass.clips().isVisible(fitted)) return;
        pass.pushClip(fitted, cornerRadius_);
        pass.draw(DrawImage{fitted, image, {}});
        pass.popClip();
    }

    void describe(AccessibleElement& element) const override {
        if (cornerRadius_ > 0) element.cornerRadius = cornerRadius_;
    }

private:
    /// Width by height; 0 while nothing is known.
    double ratio() const {
        Size natural = source_->currentImage().naturalSize;
        return aspectRatio_.value_or(natural.height > 0 ? natural.width / natural.height : 0);
    }

    Rect fittedInto(const Rect& frame) const {
        if (!(ratio() > 0)) return frame;
        double width = std::min(frame.size.width, frame.size.height * ratio());
        Size size{width, width / ratio()};
        return {{frame.center().x - size.width / 2, frame.center().y - size.height / 2}, size};
    }

    static int pixels(double length, const LayoutPass& pass) {
        return static_cast<int>(std::ceil(length / pass.grid().pixel() - 1e-6));
    }

    std::shared_ptr<ImageSource> source_;
    std::optional<double> aspectRatio_;
    double cornerRadius_;
};

}  // namespace

View SourcedImage(std::shared_ptr<ImageSource> source, std::optional<double> aspectRatio, double cornerRadius) {
    if (!source) return {};
    return View(std::make_shared<const SourcedImageElement>(std::move(source), aspectRatio, cornerRadius));
}

}  // namespace vantix
