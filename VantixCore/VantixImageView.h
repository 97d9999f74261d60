#pragma once

#include "DeclarativeUI/View.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/URL.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// Hears of taps on an image view. Main thread.
class VantixImageViewProtocol {
public:
    virtual ~VantixImageViewProtocol() = default;
    virtual void didTapOnImage() = 0;
};

/// The picture at a URL, scaled to fit the width it is offered at its own aspect ratio, from the image cache or fetched
/// anew; a placeholder until it is there, or when it cannot be had. An element of role "image"; taps go to the
/// delegate.
///
/// Used inside a body: the picture belongs to the hosted view that is being evaluated and survives its redraws.
struct VantixImageView {
    std::optional<URL> url = {};
    std::optional<std::string> imageIdentifier = {};
    /// Absent: the placeholder of `setDefaultPlaceholder`.
    std::optional<Image> placeholder = {};
    std::shared_ptr<VantixImageViewProtocol> delegate = {};
    /// Whether that does anything; a picture for which it does not is announced as a mere picture.
    bool actsOnTap = true;
    /// Width by height; absent: the picture's own.
    std::optional<double> aspectRatio = {};
    /// Points.
    double cornerRadius = 0;
    /// Whether a picture that the cache lacks is fetched.
    bool asynchronousDownload = true;

    View body() const;

    /// Where image views without a placeholder of their own find one, until another installation. Main thread.
    static void setDefaultPlaceholder(std::function<Image()> provider);
};

}  // namespace vantix
