#include "tests/Pictures/PictureComparison.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace vantix {

namespace {

constexpr int blurRadius = 8;
constexpr int gap = 10;

/// One channel's differences, or a whole number of times as much.
using Field = std::vector<int>;

Field differencesOf(const QImage& from, const QImage& to, int shift) {
    Field differences;
    for (int y = 0; y < from.height(); ++y) {
        for (int x = 0; x < from.width(); ++x) {
            auto channel = [&](const QImage& picture) { return static_cast<int>(picture.pixel(x, y) >> shift & 0xFF); };
            differences.push_back(channel(to) - channel(from));
        }
    }
    return differences;
}

/// Spreads every value over its neighbours in one direction, the closer the more; multiplies all by blurRadius².
Field blurred(const Field& values, QSize size, QPoint direction) {
    Field result(values.size());
    QRect bounds({0, 0}, size);
    auto index = [&](QPoint at) { return static_cast<std::size_t>(at.y() * size.width() + at.x()); };
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            int value = values[index({x, y})];
            for (int distance = 1 - blurRadius; value != 0 && distance < blurRadius; ++distance) {
                QPoint neighbour = QPoint(x, y) + direction * distance;
                if (bounds.contains(neighbour)) result[index(neighbour)] += (blurRadius - std::abs(distance)) * value;
            }
        }
    }
    return result;
}

}  // namespace

PictureComparison::PictureComparison(const QImage& stored, const QImage& drawn)
    : stored_(stored), drawn_(drawn), differences_(stored.size(), QImage::Format_RGB32) {
    differences_.fill(Qt::white);
    if (stored.size() != drawn.size() || stored.isNull()) {
        difference_ = 255;
        return;
    }
    QSize size = stored.size();
    Field largest(static_cast<std::size_t>(size.width() * size.height()));
    for (int shift : {16, 8, 0}) {
        Field channel = blurred(blurred(differencesOf(stored, drawn, shift), size, {1, 0}), size, {0, 1});
        std::transform(channel.begin(), channel.end(), largest.begin(), largest.begin(),
                       [](int value, int other) { return std::max(std::abs(value), other); });
    }
    for (std::size_t at = 0; at < largest.size(); ++at) {
        auto [y, x] = std::div(static_cast<int>(at), size.width());
        mark({x, y}, largest[at] / std::pow(blurRadius, 4));
    }
}

void PictureComparison::mark(QPoint place, double difference) {
    int shade = 255 - static_cast<int>(difference * 127 / tolerance);
    differences_.setPixel(place, difference > tolerance ? qRgb(255, 0, 0) : qRgb(shade, shade, shade));
    if (difference <= difference_) return;
    difference_ = difference;
    place_ = place;
}

QImage PictureComparison::sideBySide() const {
    QImage sheet(stored_.width() * 2 + drawn_.width() + 2 * gap, std::max(stored_.height(), drawn_.height()),
                 QImage::Format_RGB32);
    sheet.fill(Qt::darkGray);
    QPainter painter(&sheet);
    painter.drawImage(0, 0, stored_);
    painter.drawImage(stored_.width() + gap, 0, drawn_);
    painter.drawImage(stored_.width() + drawn_.width() + 2 * gap, 0, differences_);
    return sheet;
}

}  // namespace vantix
