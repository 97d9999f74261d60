#include "Tools/vantix-inapp/Simulate/Phone.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <cmath>

namespace vantix {

namespace {

constexpr int bezel = 12;
constexpr int cornerRadius = 16;

int points(double length) { return static_cast<int>(std::lround(length)); }

QMargins margins(const EdgeInsets& insets) {
    return {points(insets.left), points(insets.top), points(insets.right), points(insets.bottom)};
}

QLabel* makeHomeScreen(QWidget* parent) {
    auto* homeScreen = new QLabel(Phone::tr("The application is in the background."), parent);
    homeScreen->setAlignment(Qt::AlignCenter);
    homeScreen->setStyleSheet("background: #1b2a2f; color: #c8dad9");
    homeScreen->hide();
    return homeScreen;
}

}  // namespace

Phone::Phone(QWidget* application, QWidget* parent)
    : QWidget(parent), screen_(new QFrame(this)), homeScreen_(makeHomeScreen(this)) {
    screen_->setAccessibleName(tr("Screen"));
    screen_->setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(screen_);
    layout->setContentsMargins({});
    layout->addWidget(application);
    setDevice(portraitDevices().front());
}

void Phone::setDevice(const Device& device) {
    QRect screen(bezel, bezel, points(device.traits.size.width), points(device.traits.size.height));
    screen_->setContentsMargins(margins(device.traits.safeArea));
    screen_->setGeometry(screen);
    homeScreen_->setGeometry(screen);
    setFixedSize(screen.width() + 2 * bezel, screen.height() + 2 * bezel);
}

void Phone::setInForeground(bool inForeground) {
    homeScreen_->setVisible(!inForeground);
    homeScreen_->raise();
}

void Phone::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
}

}  // namespace vantix
