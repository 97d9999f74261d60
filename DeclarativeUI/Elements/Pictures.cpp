#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/LayoutPass.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace vantix {

/// Made by the build from the drawings in Symbols.
const std::string* embeddedSymbol(std::string_view fileName);

namespace {

class FixedPictureElement final : public Element {
public:
    explicit FixedPictureElement(Image image) : image_(std::move(image)) {}

    Size measure(const Proposal&, const Environment&, LayoutPass&) const override { return image_.naturalSize; }
    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        pass.draw(DrawImage{frame, image_, {}});
    }

private:
    Image image_;
};

class ResizablePictureElement final : public Element {
public:
    explicit ResizablePictureElement(Image image) : image_(std::move(image)) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        return {proposal.width.value_or(image_.naturalSize.width), proposal.height.value_or(image_.naturalSize.height)};
    }
    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        pass.draw(DrawImage{frame, image_, {}});
    }

private:
    Image image_;
};

class SymbolElement final : public Element {
public:
    explicit SymbolElement(Image drawing) : drawing_(std::move(drawing)) {}

    Size measure(const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        constexpr double sizeToFont = 1.25;
        double side = pass.roundUpToPixel(pass.drawnFont(environment.font).size * sizeToFont);
        return {side, side};
    }

    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        Color tint = environment.foregroundColor.value_or(Color::black());
        pass.show({.role = Role::image, .frame = frame, .textColor = tint});
        pass.draw(DrawImage{frame, drawing_, tint});
    }

private:
    Image drawing_;
};

class SourcedPictureElement final : public Element {
public:
    SourcedPictureElement(std::shared_ptr<ImageSource> source, std::optional<double> aspectRatio, double cornerRadius)
        : source_(std::move(source)), aspectRatio_(aspectRatio), cornerRadius_(cornerRadius) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        double width = proposal.width.value_or(source_->currentImage().naturalSize.width);
        double height = ratio() > 0 ? width / ratio() : 0;
        return {width, proposal.height.value_or(height)};
    }

    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        Rect fitted = fittedInto(frame);
        source_->needed(pixels(fitted.size.width, pass), pixels(fitted.size.height, pass));
        Image image = source_->currentImage();
        if (image.isNull() || !pass.isVisible(fitted)) return;
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
        return static_cast<int>(std::ceil(length / pass.pixel() - 1e-6));
    }

    std::shared_ptr<ImageSource> source_;
    std::optional<double> aspectRatio_;
    double cornerRadius_;
};

}  // namespace

Image systemSymbol(std::string_view systemName) {
    static std::map<std::string, Image, std::less<>> drawings;
    auto known = drawings.find(systemName);
    if (known != drawings.end()) return known->second;
    auto drawing = embeddedSymbol(std::string(systemName) + ".svg");
    if (!drawing) return {};
    return drawings[std::string(systemName)] = vectorImage(*drawing);
}

View ImageView(Image image) {
    if (image.isNull()) return {};
    return View(std::make_shared<const FixedPictureElement>(std::move(image)));
}

View ResizableImage(Image image) {
    if (image.isNull()) return {};
    return View(std::make_shared<const ResizablePictureElement>(std::move(image)));
}

View SymbolImage(std::string_view systemName) {
    Image drawing = systemSymbol(systemName);
    if (drawing.isNull()) return {};
    return View(std::make_shared<const SymbolElement>(std::move(drawing)));
}

View SourcedImage(std::shared_ptr<ImageSource> source, std::optional<double> aspectRatio, double cornerRadius) {
    if (!source) return {};
    return View(std::make_shared<const SourcedPictureElement>(std::move(source), aspectRatio, cornerRadius));
}

}  // namespace vantix
