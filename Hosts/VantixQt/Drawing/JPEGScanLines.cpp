#include "VantixQt/Drawing/JPEGScanLines.h"

#include "VantixQt/Drawing/JPEGSegments.h"

#include <QByteArray>
#include <QRgb>

#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>
#include <string>
#include <utility>
#include <vector>

namespace vantix {

namespace {

/// Encoders write a dozen.
constexpr int mostScans = 32;

/// Libjpeg's reader. It leaves its functions by a jump when something is wrong, so what owns memory lives out here.
class JPEGScanLines final : public ScanLines {
public:
    JPEGScanLines(std::string_view bytes, JPEGSegments segments, const DecodingTime& time)
        : segments_(std::move(segments)), time_(time) {
        jpeg_.err = jpeg_std_error(&complaints_);
        jpeg_.client_data = this;
        complaints_.error_exit = fail;
        complaints_.emit_message = [](j_common_ptr, int) {};
        complaints_.output_message = [](j_common_ptr) {};
        jpeg_create_decompress(&jpeg_);
        progress_.progress_monitor = giveUpInTime;
        jpeg_.progress = &progress_;
        jpeg_mem_src(&jpeg_, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    }
    JPEGScanLines(const JPEGScanLines&) = delete;
    JPEGScanLines& operator=(const JPEGScanLines&) = delete;
    ~JPEGScanLines() override { jpeg_destroy_decompress(&jpeg_); }

    bool readHeader() {
        if (setjmp(jump_)) return false;
        return jpeg_read_header(&jpeg_, TRUE) == JPEG_HEADER_OK;
    }

    PixelSize size() const override {
        return {static_cast<int>(jpeg_.image_width), static_cast<int>(jpeg_.image_height)};
    }
    Orientation orientation() const override { return segments_.orientation; }

    /// Two rows of blocks for each colour, and of a picture of several scans all coefficients.
    std::int64_t memory() const override {
        std::int64_t samples =
            std::int64_t{2} * DCTSIZE * jpeg_.max_v_samp_factor * jpeg_.num_components * jpeg_.image_width;
        if (!hasSeveralScans()) return samples;
        for (int at = 0; at < jpeg_.num_components; ++at) {
            const jpeg_component_info& component = jpeg_.comp_info[at];
            samples += std::int64_t{sizeof(JBLOCK)} * component.width_in_blocks * component.height_in_blocks;
        }
        return samples;
    }

    std::optional<PixelSize> begin(PixelSize needed) override {
        isCMYK_ = jpeg_.jpeg_color_space == JCS_CMYK || jpeg_.jpeg_color_space == JCS_YCCK;
        jpeg_.out_color_space = isCMYK_ ? JCS_CMYK : isLittleEndian ? JCS_EXT_BGRA : JCS_EXT_ARGB;
        auto isPlenty = [&](int divisor) {
            return size().width / divisor >= 2 * needed.width && size().height / divisor >= 2 * needed.height;
        };
        while (jpeg_.scale_denom < 8 && isPlenty(2 * static_cast<int>(jpeg_.scale_denom))) jpeg_.scale_denom *= 2;
        if (!start()) return std::nullopt;
        line_.resize(jpeg_.output_width);
        return PixelSize{static_cast<int>(jpeg_.output_width), static_cast<int>(jpeg_.output_height)};
    }

    std::optional<ScanLine> next() override {
        const auto y = static_cast<int>(jpeg_.output_scanline);
        if (!readLine()) return std::nullopt;
        if (isCMYK_) fromCMYK();
        return ScanLine{y, 0, 1, line_};
    }

    QColorSpace colorSpace() const override {
        const std::string& profile = segments_.profile;
        if (profile.empty() || isCMYK_) return {};
        return QColorSpace::fromIccProfile(QByteArray(profile.data(), static_cast<qsizetype>(profile.size())));
    }

private:
    bool hasSeveralScans() const { return jpeg_.progressive_mode || jpeg_.comps_in_scan < jpeg_.num_components; }

    bool start() {
        if (setjmp(jump_)) return false;
        jpeg_start_decompress(&jpeg_);
        return true;
    }

    bool readLine() {
        if (setjmp(jump_)) return false;
        auto* row = reinterpret_cast<JSAMPROW>(line_.data());
        return jpeg_read_scanlines(&jpeg_, &row, 1) == 1;
    }

    /// Such pictures hold how much is left of white.
    void fromCMYK() {
        for (std::uint32_t& pixel : line_) {
            const auto* cmyk = reinterpret_cast<const unsigned char*>(&pixel);
            auto color = [cmyk](int ink) { return cmyk[3] * cmyk[ink] / 255; };
            pixel = qRgb(color(0), color(1), color(2));
        }
    }

    static JPEGScanLines& self(j_common_ptr jpeg) { return *static_cast<JPEGScanLines*>(jpeg->client_data); }
    [[noreturn]] static void fail(j_common_ptr jpeg) { std::longjmp(self(jpeg).jump_, 1); }
    static void giveUpInTime(j_common_ptr jpeg) {
        if (self(jpeg).time_.isOver()) fail(jpeg);
    }

    JPEGSegments segments_;
    const DecodingTime& time_;
    jpeg_decompress_struct jpeg_{};
    jpeg_error_mgr complaints_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf jump_{};
    bool isCMYK_ = false;
    std::vector<std::uint32_t> line_;
};

}  // namespace

Result<std::unique_ptr<ScanLines>> jpegScanLines(std::string_view bytes, const DecodingTime& time) {
    auto segments = jpegSegments(bytes);
    if (!segments) return Error{"the picture is damaged or its end is missing"};
    if (segments->scanCount > mostScans) {
        return Error{"the picture has too many scans: " + std::to_string(segments->scanCount)};
    }
    auto lines = std::make_unique<JPEGScanLines>(bytes, std::move(*segments), time);
    if (!lines->readHeader()) return Error{"the picture's header cannot be read"};
    return Result<std::unique_ptr<ScanLines>>(std::move(lines));
}

}  // namespace vantix
