#include "VantixCore/VantixImageView.h"

#include "DeclarativeUI/HostedView.h"
#include "VantixCore/ImageLoader.h"

#include <utility>

namespace vantix {

namespace {

std::function<Image()>& defaultPlaceholder() {
    static std::function<Image()> provider;
    return provider;
}

Image placeholderFor(const VantixImageView& view) {
    if (view.placeholder) return *view.placeholder;
    return defaultPlaceholder() ? defaultPlaceholder()() : Image{};
}

std::shared_ptr<ImageLoader> makeLoader(const VantixImageView& view, const std::weak_ptr<HostedView>& host) {
    ImageRequest request{view.url, view.imageIdentifier, view.asynchronousDownload};
    auto loader = std::make_shared<ImageLoader>(std::move(request), [host] {
        if (auto alive = host.lock()) alive->setNeedsLayout();
    });
    loader->start();
    return loader;
}

/// The loader that belongs to the hosted view under evaluation.
std::shared_ptr<ImageLoader> loaderFor(const VantixImageView& view, HostedView& host) {
    std::string key = "image:" + (view.url ? view.url->text() : "") + " " + view.imageIdentifier.value_or("");
    auto make = [&]() -> std::shared_ptr<void> { return makeLoader(view, host.weak_from_this()); };
    return std::static_pointer_cast<ImageLoader>(host.object(key, make));
}

}  // namespace

View VantixImageView::body() const {
    HostedView* host = HostedView::current();
    if (!host) return {};

    auto loader = loaderFor(*this, *host);
    loader->setPlaceholder(placeholderFor(*this));
    View picture = SourcedImage(loader, aspectRatio, cornerRadius).element(Role::image, "Image");
    if (!delegate) return picture;
    return picture.onTapGesture([delegate = delegate] { delegate->didTapOnImage(); });
}

void VantixImageView::setDefaultPlaceholder(std::function<Image()> provider) {
    defaultPlaceholder() = std::move(provider);
}

}  // namespace vantix
