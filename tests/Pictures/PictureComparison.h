#pragma once

#include <QImage>
#include <QPoint>

namespace vantix {

/// Two pictures of one screen, compared as a short-sighted eye does: after a blur over 15 × 15 pixels. How edges are
/// smoothed and glyphs are shaped hardly changes a blurred picture; a control that has moved by 4 pixels changes it by
/// half of its contrast.
class PictureComparison {
public:
    PictureComparison(const QImage& stored, const QImage& drawn);

    bool areAlike() const { return difference_ <= tolerance; }
    /// The largest difference of a blurred channel, 0 to 255; 255 for pictures of different sizes.
    double difference() const { return difference_; }
    /// Where the pictures differ most.
    QPoint place() const { return place_; }
    /// The stored picture, the drawn one, and where they differ: the darker the more, red beyond the tolerance.
    QImage sideBySide() const;

    static constexpr double tolerance = 26;

private:
    void mark(QPoint place, double difference);

    QImage stored_;
    QImage drawn_;
    QImage differences_;
    double difference_ = 0;
    QPoint place_;
};

}  // namespace vantix
