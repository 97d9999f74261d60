#include "VantixQt/Windows/Surroundings.h"

#include <QEvent>
#include <QFont>
#include <QFontInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace vantix::qt {

namespace {

/// The sizes that desktops ship with, in typographic points: all of them count as the designer's.
constexpr double smallestUsualFontSize = 9;
constexpr double largestUsualFontSize = 11;

double platformTextScale() {
    double size = QFontInfo(QGuiApplication::font()).pointSizeF();
    if (size <= 0) return 1;
    if (size < smallestUsualFontSize) return size / smallestUsualFontSize;
    return std::max(1.0, size / largestUsualFontSize);
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < palette.color(QPalette::WindowText).lightnessF();
}

}  // namespace

Surroundings::Surroundings(QObject* parent) : QObject(parent) { QGuiApplication::instance()->installEventFilter(this); }

SceneTraits Surroundings::traits() const {
    SceneTraits traits;
    traits.textScale = textScale_ > 0 ? textScale_ : platformTextScale();
    traits.layoutDirection =
        QGuiApplication::isRightToLeft() ? LayoutDirection::rightToLeft : LayoutDirection::leftToRight;
    traits.colorScheme = isDark(QGuiApplication::palette()) ? ColorScheme::dark : ColorScheme::light;
    traits.reducesMotion = reducesMotion_;
    traits.locale = QLocale().bcp47Name().toStdString();
    return traits;
}

void Surroundings::setTextScale(double scale) {
    if (std::exchange(textScale_, scale) != scale) emit changed();
}

void Surroundings::setReducesMotion(bool reduces) {
    if (std::exchange(reducesMotion_, reduces) != reduces) emit changed();
}

bool Surroundings::eventFilter(QObject* watched, QEvent* event) {
    if (watched != QGuiApplication::instance()) return false;
    switch (event->type()) {
        case QEvent::ApplicationFontChange:
        case QEvent::ApplicationPaletteChange:
        case QEvent::ApplicationLayoutDirectionChange:
        case QEvent::LocaleChange:
        case QEvent::LanguageChange:
            emit changed();
            break;
        default:
            break;
    }
    return false;
}

}  // namespace vantix::qt
