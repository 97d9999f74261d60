#include "Hosts/Qt/PNGReader.h"

#include <png.h>

namespace vantix::PNGReader {

namespace {

/// A picture whose header is read, or that says why it is not.
class Header {
public:
    explicit Header(std::string_view bytes) {
        image_.version = PNG_IMAGE_VERSION;
        isRead_ = png_image_begin_read_from_memory(&image_, bytes.data(), bytes.size()) != 0;
    }
    Header(const Header&) = delete;
    Header& operator=(const Header&) = delete;
    ~Header() { png_image_free(&image_); }

    bool isRead() const { return isRead_; }
    Error error() const { return {image_.message}; }
    QSize size() const { return {static_cast<int>(image_.width), static_cast<int>(image_.height)}; }

    bool readPixels(QImage& pixels) {
        image_.format = PNG_FORMAT_RGBA;
        auto bytesPerRow = static_cast<png_int_32>(pixels.bytesPerLine());
        return png_image_finish_read(&image_, nullptr, pixels.bits(), bytesPerRow, nullptr) != 0;
    }

private:
    png_image image_ = {};
    bool isRead_ = false;
};

}  // namespace

Result<QSize> size(std::string_view bytes) {
    Header header(bytes);
    if (!header.isRead()) return header.error();
    return header.size();
}

Result<QImage> read(std::string_view bytes) {
    Header header(bytes);
    if (!header.isRead()) return header.error();
    QImage pixels(header.size(), QImage::Format_RGBA8888);
    if (pixels.isNull()) return Error{"not enough memory"};
    if (!header.readPixels(pixels)) return header.error();
    return pixels;
}

}  // namespace vantix::PNGReader
