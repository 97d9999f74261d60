#include "VantixQt/Drawing/PNGScanLines.h"

#include <QColorSpace>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <png.h>
#include <vector>

namespace vantix {

namespace {

using Pixel = std::array<float, 4>;

/// Calls for each of `targetCount` cells that one of `sourceCount` cells over the same length touches, with the share
/// of the former that the latter covers.
template <typename Visit>
void forEachShare(std::int64_t source, std::int64_t sourceCount, std::int64_t targetCount, Visit visit) {
    const std::int64_t begin = source * targetCount;
    const std::int64_t end = begin + targetCount;
    for (std::int64_t target = begin / sourceCount; target * sourceCount < end; ++target) {
        std::int64_t covered = std::min(end, (target + 1) * sourceCount) - std::max(begin, target * sourceCount);
        visit(static_cast<std::size_t>(target), static_cast<float>(covered) / static_cast<float>(sourceCount));
    }
}

/// Averages lines of pixels over the areas that the pixels of a smaller picture cover.
class AreaMean {
public:
    AreaMean(int sourceWidth, int sourceHeight, QImage& target)
        : sourceWidth_(sourceWidth),
          sourceHeight_(sourceHeight),
          target_(target),
          line_(static_cast<std::size_t>(target.width())),
          sum_(line_.size()) {}

    /// `rgba` has four bytes for each pixel of a line, with straight alpha.
    void addLine(const std::vector<png_byte>& rgba) {
        std::fill(line_.begin(), line_.end(), Pixel{});
        for (int x = 0; x < sourceWidth_; ++x) {
            const png_byte* pixel = &rgba[std::size_t{4} * static_cast<std::size_t>(x)];
            const float alpha = static_cast<float>(pixel[3]) / 255;
            const Pixel premultiplied{alpha * pixel[0], alpha * pixel[1], alpha * pixel[2], float(pixel[3])};
            forEachShare(x, sourceWidth_, target_.width(),
                         [&](std::size_t column, float share) { add(premultiplied, share, line_[column]); });
        }
        forEachShare(sourceLine_++, sourceHeight_, target_.height(), [this](std::size_t row, float share) {
            if (row > static_cast<std::size_t>(targetLine_)) finishLine();
            for (std::size_t column = 0; column < line_.size(); ++column) add(line_[column], share, sum_[column]);
        });
        if (sourceLine_ == sourceHeight_) finishLine();
    }

private:
    static void add(const Pixel& pixel, float share, Pixel& sum) {
        for (std::size_t channel = 0; channel < sum.size(); ++channel) sum[channel] += share * pixel[channel];
    }

    void finishLine() {
        auto* pixels = reinterpret_cast<QRgb*>(target_.scanLine(targetLine_++));
        for (Pixel& sum : sum_) {
            auto byte = [&sum](std::size_t channel) { return static_cast<int>(std::min(sum[channel], 255.0F) + 0.5F); };
            *pixels++ = qRgba(byte(0), byte(1), byte(2), byte(3));
            sum = {};
        }
    }

    int sourceWidth_;
    int sourceHeight_;
    QImage& target_;
    int sourceLine_ = 0;
    int targetLine_ = 0;
    std::vector<Pixel> line_;
    std::vector<Pixel> sum_;
};

/// Libpng's reader. It leaves its functions by a jump when something is wrong, so what owns memory lives out here.
class PNGReader {
public:
    explicit PNGReader(std::string_view bytes) : rest_(bytes) {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore);
        info_ = png_create_info_struct(png_);
        png_set_read_fn(png_, this, read);
    }
    PNGReader(const PNGReader&) = delete;
    PNGReader& operator=(const PNGReader&) = delete;
    ~PNGReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    /// Begins, with four bytes for each pixel.
    bool readHeader() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_info(png_, info_);
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
        png_read_update_info(png_, info_);
        return true;
    }

    int width() const { return static_cast<int>(png_get_image_width(png_, info_)); }
    int height() const { return static_cast<int>(png_get_image_height(png_, info_)); }

    QColorSpace colorSpace() const {
        png_charp name = nullptr;
        png_bytep profile = nullptr;
        png_uint_32 size = 0;
        int compression = 0;
        if (!png_get_iCCP(png_, info_, &name, &compression, &profile, &size)) return {};
        return QColorSpace::fromIccProfile(QByteArray(reinterpret_cast<const char*>(profile), int(size)));
    }

    bool readLine(std::vector<png_byte>& rgba) {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_row(png_, rgba.data(), nullptr);
        return true;
    }

private:
    [[noreturn]] static void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}

    static void read(png_structp png, png_bytep target, std::size_t count) {
        std::string_view& rest = static_cast<PNGReader*>(png_get_io_ptr(png))->rest_;
        if (count > rest.size()) png_error(png, "the end is missing");
        std::memcpy(target, rest.data(), count);
        rest.remove_prefix(count);
    }

    std::string_view rest_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

}  // namespace

QImage scaledFromScanLines(std::string_view png, const QSize& size) {
    PNGReader reader(png);
    if (!reader.readHeader()) return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return {};
    AreaMean mean(reader.width(), reader.height(), image);
    std::vector<png_byte> line(std::size_t{4} * static_cast<std::size_t>(reader.width()));
    for (int y = 0; y < reader.height(); ++y) {
        if (!reader.readLine(line)) return {};
        mean.addLine(line);
    }
    image.setColorSpace(reader.colorSpace());
    return image;
}

}  // namespace vantix
