#include "Platform/Ports/PixelSize.h"

#include <algorithm>
#include <cmath>

namespace vantix {

PixelSize fitted(PixelSize size, PixelSize bound, std::int64_t most) {
    double share = std::sqrt(double(most) / double(area(size)));
    double ratio = std::min({1.0, share, double(bound.width) / size.width, double(bound.height) / size.height});
    auto scaled = [ratio](int length, int limit) {
        double exact = length * ratio;
        bool isLimit = std::abs(exact - limit) < 1 && limit > 0 && limit <= length;
        return isLimit ? limit : std::max(1, static_cast<int>(std::lround(exact)));
    };
    return {scaled(size.width, bound.width), scaled(size.height, bound.height)};
}

}  // namespace vantix
