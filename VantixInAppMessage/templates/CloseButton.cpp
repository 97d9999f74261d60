#include "VantixInAppMessage/templates/CloseButton.h"

#include "Platform/Values/FatalError.h"
#include "VantixInAppMessage/Resources/ResourceBundle.h"

namespace vantix {

namespace {

const Image& cross() {
    static const Image image = ImageResource::cross().image();
    if (image.isNull()) fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return image;
}

}  // namespace

View CloseButton::body() const {
    auto close = [delegate = delegate_] {
        if (delegate) delegate->handleClickAction();
    };
    return PlainButton(close, ResizableImage(cross()).frame({.width = 20, .height = 20}))
        .frame({.width = 44, .height = 44, .alignment = Alignment::topTrailing()})
        .element(Role::close, "Close");
}

}  // namespace vantix
