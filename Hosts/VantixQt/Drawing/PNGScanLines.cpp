#include "VantixQt/Drawing/PNGScanLines.h"

#include "VantixQt/Drawing/ByteReader.h"

#include <QByteArray>
#include <QPointF>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstring>
#include <png.h>
#include <utility>
#include <vector>
#include <zlib.h>

namespace vantix {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t signatureSize = 8;
/// Of a colour profile, packed or not.
constexpr std::size_t largestProfile = std::size_t{4} << 20;

/// Whether the bytes reach to the end and agree with their checksums.
bool isIntact(std::string_view bytes) {
    ByteReader reader(bytes);
    reader.skip(signatureSize);
    std::string_view type;
    while (type != "IEND"sv) {
        std::uint32_t length = reader.number(4);
        std::string_view typeAndData = reader.take(std::size_t{length} + 4);
        std::uint32_t checksum = reader.number(4);
        if (reader.isExhausted()) return false;
        auto actual = crc32_z(0, reinterpret_cast<const Bytef*>(typeAndData.data()), typeAndData.size());
        if (checksum != actual) return false;
        bool isFirst = type.empty();
        type = typeAndData.substr(0, 4);
        if (isFirst && type != "IHDR"sv) return false;
    }
    return true;
}

/// A PNG's bytes without the chunks that its pixels do not depend on.
class NeededChunks {
public:
    explicit NeededChunks(std::string_view bytes) : reader_(bytes), chunk_(reader_.take(signatureSize)) {}

    bool read(char* target, std::size_t count) {
        while (count > 0) {
            if (chunk_.empty() && !findNext()) return false;
            std::size_t size = std::min(count, chunk_.size());
            std::memcpy(target, chunk_.data(), size);
            chunk_.remove_prefix(size);
            target += size;
            count -= size;
        }
        return true;
    }

private:
    static constexpr std::size_t lengthAndType = 8, checksum = 4;

    bool findNext() {
        while (!reader_.rest().empty()) {
            std::string_view rest = reader_.rest();
            std::size_t length = ByteReader(rest).number(4);
            chunk_ = reader_.take(length + lengthAndType + checksum);
            if (isNeeded(rest.substr(4, 4), length)) return true;
        }
        return false;
    }

    bool isNeeded(std::string_view type, std::size_t length) {
        constexpr std::array needed{"IHDR"sv, "PLTE"sv, "IDAT"sv, "IEND"sv, "tRNS"sv, "gAMA"sv, "cHRM"sv, "sRGB"sv};
        if (type == "iCCP"sv) return !std::exchange(hadProfile_, true) && length < largestProfile;
        return std::find(needed.begin(), needed.end(), type) != needed.end();
    }

    ByteReader reader_;
    std::string_view chunk_;
    bool hadProfile_ = false;
};

/// Libpng's reader. It leaves its functions by a jump when something is wrong, so what owns memory lives out here.
class PNGScanLines final : public ScanLines {
public:
    explicit PNGScanLines(std::string_view bytes) : chunks_(bytes) {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore);
        info_ = png_create_info_struct(png_);
        png_set_read_fn(png_, this, read);
        png_set_chunk_malloc_max(png_, largestProfile);
        // The checksums were looked at before.
        png_set_crc_action(png_, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
    }
    PNGScanLines(const PNGScanLines&) = delete;
    PNGScanLines& operator=(const PNGScanLines&) = delete;
    ~PNGScanLines() override { png_destroy_read_struct(&png_, &info_, nullptr); }

    bool readHeader() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_info(png_, info_);
        storedBitsPerPixel_ = png_get_bit_depth(png_, info_) * png_get_channels(png_, info_);
        isInterlaced_ = png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE;
        return true;
    }

    PixelSize size() const override { return {static_cast<int>(width()), static_cast<int>(height())}; }
    bool comeInOrder() const override { return !isInterlaced_; }

    /// Libpng holds two lines, as they are stored or as they are wanted, and one of eight bytes a pixel at most.
    std::int64_t memory() const override { return (std::int64_t{storedBitsPerPixel_} / 4 + 24) * width(); }

    std::optional<PixelSize> begin(PixelSize) override {
        line_.resize(width());
        if (!transform()) return std::nullopt;
        return size();
    }

    std::optional<ScanLine> next() override {
        while (isInterlaced_ && (row_ == PNG_PASS_ROWS(height(), pass_) || PNG_PASS_COLS(width(), pass_) == 0)) {
            if (++pass_ == PNG_INTERLACE_ADAM7_PASSES) return std::nullopt;
            row_ = 0;
        }
        if (!readLine()) return std::nullopt;
        const auto row = static_cast<int>(row_++);
        if (!isInterlaced_) return ScanLine{row, 0, 1, line_};
        return ScanLine{static_cast<int>(PNG_ROW_FROM_PASS_ROW(row, pass_)),
                        static_cast<int>(PNG_PASS_START_COL(pass_)), 1 << PNG_PASS_COL_SHIFT(pass_),
                        std::span(line_).first(PNG_PASS_COLS(width(), pass_))};
    }

    QColorSpace colorSpace() const override {
        if (QColorSpace own = profile(); own.isValid()) return own;
        if (int intent = 0; png_get_sRGB(png_, info_, &intent) != 0) return QColorSpace::SRgb;
        double gamma = 0;
        if (png_get_gAMA(png_, info_, &gamma) == 0 || gamma <= 0) return {};
        return withGamma(static_cast<float>(1 / gamma));
    }

private:
    png_uint_32 width() const { return png_get_image_width(png_, info_); }
    png_uint_32 height() const { return png_get_image_height(png_, info_); }

    QColorSpace profile() const {
        png_charp name = nullptr;
        png_bytep bytes = nullptr;
        png_uint_32 size = 0;
        int compression = 0;
        if (png_get_iCCP(png_, info_, &name, &compression, &bytes, &size) == 0) return {};
        return QColorSpace::fromIccProfile(
            QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    }

    QColorSpace withGamma(float gamma) const {
        double whiteX = 0, whiteY = 0, redX = 0, redY = 0, greenX = 0, greenY = 0, blueX = 0, blueY = 0;
        if (png_get_cHRM(png_, info_, &whiteX, &whiteY, &redX, &redY, &greenX, &greenY, &blueX, &blueY) == 0) {
            return {QColorSpace::Primaries::SRgb, gamma};
        }
        return QColorSpace({whiteX, whiteY}, {redX, redY}, {greenX, greenY}, {blueX, blueY},
                           QColorSpace::TransferFunction::Gamma, gamma);
    }

    /// To four bytes for each pixel, which are one number.
    bool transform() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        if constexpr (isLittleEndian) {
            png_set_bgr(png_);
        } else {
            png_set_swap_alpha(png_);
        }
        png_set_add_alpha(png_, 0xFF, isLittleEndian ? PNG_FILLER_AFTER : PNG_FILLER_BEFORE);
        png_read_update_info(png_, info_);
        return png_get_rowbytes(png_, info_) == 4 * std::size_t{width()};
    }

    bool readLine() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_row(png_, reinterpret_cast<png_bytep>(line_.data()), nullptr);
        return true;
    }

    [[noreturn]] static void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}

    static void read(png_structp png, png_bytep target, std::size_t count) {
        NeededChunks& chunks = static_cast<PNGScanLines*>(png_get_io_ptr(png))->chunks_;
        if (!chunks.read(reinterpret_cast<char*>(target), count)) png_error(png, "the end is missing");
    }

    NeededChunks chunks_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    int storedBitsPerPixel_ = 0;
    bool isInterlaced_ = false;
    int pass_ = 0;
    png_uint_32 row_ = 0;
    std::vector<std::uint32_t> line_;
};

}  // namespace

Result<std::unique_ptr<ScanLines>> pngScanLines(std::string_view bytes) {
    if (!isIntact(bytes)) return Error{"the picture is damaged or its end is missing"};
    auto lines = std::make_unique<PNGScanLines>(bytes);
    if (!lines->readHeader()) return Error{"the picture's header cannot be read"};
    return Result<std::unique_ptr<ScanLines>>(std::move(lines));
}

}  // namespace vantix
