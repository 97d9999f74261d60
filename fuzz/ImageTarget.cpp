#include "VantixQt/Drawing/QtImageDecoder.h"
#include "fuzz/FuzzTarget.h"

#include <QGuiApplication>

using namespace vantix;

namespace {

const QtImageDecoder& decoder() {
    static int argumentCount = 3;
    static char arguments[][12] = {"fuzz", "-platform", "offscreen"};
    static char* argumentList[] = {arguments[0], arguments[1], arguments[2], nullptr};
    [[maybe_unused]] static auto* const application = new QGuiApplication(argumentCount, argumentList);
    static auto* const made = new QtImageDecoder;
    return *made;
}

}  // namespace

/// A picture: what can be told of its size holds of its pixels, and it is decoded to no more than was asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto bytes = fuzz::textOf(data, size);
    auto natural = decoder().probe(bytes);
    for (PixelSize bound : {PixelSize{1, 1}, PixelSize{30, 60}, PixelSize{100'000, 100'000}}) {
        auto decoded = decoder().decode(bytes, bound);
        if (!decoded) continue;
        const Image& image = decoded.value();
        const Bitmap& bitmap = *image.bitmap;
        fuzz::expect(
            natural && image.naturalSize == Size{double(natural.value().width), double(natural.value().height)},
            "what is decoded can be probed, and has the size that was told");
        fuzz::expect(
            bitmap.width > 0 && bitmap.width <= bound.width && bitmap.height > 0 && bitmap.height <= bound.height,
            "the bound is kept");
        auto pixels = std::int64_t{bitmap.width} * bitmap.height;
        fuzz::expect(std::ssize(bitmap.pixels) == pixels && pixels <= 10'100'000, "the pixels are there, and not more");
    }
    return 0;
}
