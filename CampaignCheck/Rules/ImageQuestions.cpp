#include "CampaignCheck/Rules/ImageQuestions.h"

#include "CampaignCheck/Rules/WrittenFields.h"

#include <cmath>

namespace vantix {

namespace {

constexpr const char* place = "/body/image";

/// The pixels that the image covers on the device, across; 0 where it is not drawn.
double pixelsAcross(const CheckedCampaign& checked) {
    const AccessibleElement* element = checked.picture.untouched().element({Role::image, 0});
    if (!element) return 0;
    double points = element->frame.size.width;
    // A banner fits it into a square, all others give it its height.
    const PixelSize& size = checked.image->size;
    if (checked.message().body.isBanner() && size.width < size.height) points *= double(size.width) / size.height;
    return points * checked.picture.scale();
}

std::string inPixels(double number) { return std::to_string(std::lround(number)) + " pixels"; }

}  // namespace

Objections lostImage(const CheckedCampaign& checked) {
    if (!checked.image || !checked.image->problem) return {};
    bool isGone = checked.message().canDeleteInAppMessageWhenImageDownloadingFailed();
    return {{place,
             "the image cannot be had (" + *checked.image->problem + "), and " +
                 (isGone ? "a header or footer goes with its image" : "a placeholder stands in its place"),
             "the address of a PNG, JPEG, GIF or WebP picture that anyone can fetch"}};
}

Objections largeImage(const CheckedCampaign& checked) {
    constexpr std::uintmax_t mostBytes = 2'000'000;
    constexpr double mostPixels = 4;
    if (!checked.image || checked.image->problem) return {};
    double shown = pixelsAcross(checked);
    const FetchedImage& image = *checked.image;
    bool hasTooManyBytes = image.bytes > mostBytes;
    bool hasTooManyPixels = shown > 0 && image.size.width * image.size.width > mostPixels * shown * shown;
    if (!hasTooManyBytes && !hasTooManyPixels) return {};
    std::string what =
        hasTooManyBytes ? std::to_string(image.bytes / 1000) + " KB" : inPixels(image.size.width) + " across";
    return {{place,
             "the image has " + what + ", and every device fetches all of it to show " + inPixels(shown) + " across",
             "a picture of " + inPixels(shown) + " across"}};
}

Objections smallImage(const CheckedCampaign& checked) {
    if (!checked.image || checked.image->problem) return {};
    double shown = pixelsAcross(checked);
    if (checked.image->size.width >= shown) return {};
    return {{place,
             "the image has " + inPixels(checked.image->size.width) + " across and is drawn over " + inPixels(shown) +
                 ", so that it looks blurred",
             "a picture of " + inPixels(shown) + " across"}};
}

}  // namespace vantix
