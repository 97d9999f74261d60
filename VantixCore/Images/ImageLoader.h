#pragma once

#include "DeclarativeUI/View.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/Image.h"
#include "VantixCore/Images/ImageService.h"
#include "VantixCore/TransferHandle.h"

#include <functional>
#include <memory>
#include <optional>

namespace vantix {

/// Brings the picture of an image view in: first its proportions, so that it can be laid out, then its pixels, as many
/// as the layout needs. What is still to come ends with it. Main thread only, except that it may go on any thread.
class ImageLoader final : public ImageSource, public std::enable_shared_from_this<ImageLoader> {
public:
    /// `onChange` is called whenever there is another picture to draw.
    ImageLoader(std::shared_ptr<ImageService> images, std::shared_ptr<const Platform> platform, ImageRequest request,
                std::function<void()> onChange);

    /// Begins to load.
    void start();

    /// What is drawn until the picture is there, or when it cannot be had.
    void setPlaceholder(Image placeholder);

    Image currentImage() const override;
    void needed(int pixelWidth, int pixelHeight) override;

private:
    void takeSize(PixelSize naturalSize);
    void decode();
    void takePicture(Image picture);

    std::shared_ptr<ImageService> images_;
    std::shared_ptr<const Platform> platform_;
    ImageRequest request_;
    std::function<void()> onChange_;
    Image placeholder_;
    /// Of the picture; absent until it is known that there is one.
    std::optional<PixelSize> naturalSize_;
    /// The most pixels that were asked for.
    PixelSize bound_;
    Image picture_;
    TransferHandle finding_;
    TransferHandle decoding_;
};

}  // namespace vantix
