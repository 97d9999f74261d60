#pragma once

#include <QImage>

#include <string_view>

namespace vantix {

/// Decodes a PNG that is not interlaced line by line, averaged to `size`, which is no enlargement: only one line and
/// the result are in memory, however large the picture is. Null for damaged bytes. Usable from any thread.
QImage scaledFromScanLines(std::string_view png, const QSize& size);

}  // namespace vantix
