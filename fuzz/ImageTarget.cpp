#include "VantixQt/Drawing/QtImageDecoder.h"

#include <QGuiApplication>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace vantix;

const QtImageDecoder& decoder() {
    static int argumentCount = 1;
    static char name[] = "image", *arguments[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    [[maybe_unused]] static auto* const application = new QGuiApplication(argumentCount, arguments);
    static auto* const made = new QtImageDecoder;
    return *made;
}

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

/// Whatever the bytes are, a picture is decoded to no more than it was asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Result<PixelSize> natural = decoder().probe(bytes);
    for (PixelSize bound : {PixelSize{1, 1}, PixelSize{30, 60}, PixelSize{100'000, 100'000}}) {
        Result<Image> image = decoder().decode(bytes, bound);
        if (!image) continue;
        const Bitmap& bitmap = *image.value().bitmap;
        require(natural &&
                image.value().naturalSize == Size{double(natural.value().width), double(natural.value().height)});
        require(bitmap.width > 0 && bitmap.width <= bound.width && bitmap.height > 0 && bitmap.height <= bound.height);
        require(std::int64_t{bitmap.width} * bitmap.height <= 10'100'000);
        require(std::ssize(bitmap.pixels) == std::int64_t{bitmap.width} * bitmap.height);
    }
    return 0;
}
