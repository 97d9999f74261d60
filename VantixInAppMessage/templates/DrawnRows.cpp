#include "VantixInAppMessage/templates/DrawnRows.h"

#include <algorithm>

namespace vantix {

std::vector<std::string> drawnRows(std::vector<std::string> texts) {
    constexpr std::size_t mostRows = 200;
    constexpr std::size_t mostText = 16 * 1024;
    std::size_t rows = 0;
    std::size_t length = 0;
    while (rows < std::min(texts.size(), mostRows) && length <= mostText) length += texts[rows++].size();
    texts.resize(rows);
    return texts;
}

}  // namespace vantix
