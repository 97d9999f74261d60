#include "VantixCore/VantixImageView.h"

#include "DeclarativeUI/Elements/SourcedImage.h"
#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/MainThread.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Images/ImageLoader.h"
#include "VantixCore/Installation/Installation.h"

#include <utility>

namespace vantix {

namespace {

Image placeholderFor(const VantixImageView& view) {
    if (view.placeholder) return *view.placeholder;
    const auto& provider = Installation::current()->defaultPlaceholder;
    return provider ? provider() : Image{};
}

std::shared_ptr<ImageLoader> makeLoader(const VantixImageView& view, const std::weak_ptr<HostedView>& host) {
    ImageRequest request{view.url, view.imageIdentifier, view.asynchronousDownload};
    auto installation = Installation::current();
    auto loader = std::make_shared<ImageLoader>(installation->images(), installation->platform(), std::move(request),
                                                whileAlive(host, [](HostedView& alive) { alive.setNeedsLayout(); }));
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
    View picture = SourcedImage(loader, aspectRatio, cornerRadius)
                       .accessibleName("")
                       .actsOnTap(actsOnTap)
                       .element(Role::image, "Image");
    if (!delegate) return picture;
    return picture.onTapGesture([delegate = delegate] { delegate->didTapOnImage(); });
}

void VantixImageView::setDefaultPlaceholder(std::function<Image()> provider) {
    assertMainThread("VantixImageView::setDefaultPlaceholder");
    Installation::current()->defaultPlaceholder = std::move(provider);
}

}  // namespace vantix
