#include "VantixInAppMessage/templates/CloseButton.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/ResizableImage.h"
#include "DeclarativeUI/Elements/Spacer.h"
#include "DeclarativeUI/Elements/Stacks.h"
#include "Platform/Values/FatalError.h"
#include "VantixInAppMessage/Resources/ImageResource.h"

namespace vantix {

namespace {

const Image& cross() {
    static const auto& image = *new const Image(ImageResource::cross().image());
    if (image.isNull()) fatalError("Unexpectedly found nil while unwrapping an Optional value");
    return image;
}

}  // namespace

View CloseButton::body() const {
    auto close = [delegate = delegate_] {
        if (delegate) delegate->handleClickAction();
    };
    return PlainButton(close, ResizableImage(cross()).frame({.width = 20, .height = 20}))
        .frame({.width = touchSize, .height = touchSize, .alignment = Alignment::topTrailing()})
        .element(Role::close, "Close");
}

View closeRow(const View& closeButton) { return HStack(VerticalAlignment::top, {Spacer(), closeButton}); }

}  // namespace vantix
