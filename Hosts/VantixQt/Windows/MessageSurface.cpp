#include "VantixQt/Windows/MessageSurface.h"

#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtConversions.h"

#include <QEasingCurve>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace vantix::qt {

namespace {

constexpr int appearMilliseconds = 220;
constexpr int disappearMilliseconds = 150;
/// Points that a message in place rises by while it fades in.
constexpr double rise = 12;

std::optional<Key> keyOf(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Tab:
            return event.modifiers().testFlag(Qt::ShiftModifier) ? Key::previous : Key::next;
        case Qt::Key_Backtab:
            return Key::previous;
        case Qt::Key_Up:
            return Key::up;
        case Qt::Key_Down:
            return Key::down;
        case Qt::Key_Left:
            return Key::left;
        case Qt::Key_Right:
            return Key::right;
        case Qt::Key_PageUp:
            return Key::pageUp;
        case Qt::Key_PageDown:
            return Key::pageDown;
        case Qt::Key_Home:
            return Key::home;
        case Qt::Key_End:
            return Key::end;
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Select:
            return Key::activate;
        case Qt::Key_Escape:
        case Qt::Key_Back:
            return Key::escape;
        default:
            return std::nullopt;
    }
}

Point fromQt(QPointF point) { return {point.x(), point.y()}; }

}  // namespace

MessageSurface::MessageSurface(const WindowDescription& description, std::shared_ptr<HostedView> content,
                               const TextMeasurer& measurer, DisplayListPainter& painter)
    : content_(std::move(content)),
      measurer_(measurer),
      painter_(painter),
      interaction_(content_, description.blocksApplication ? FocusCycle::closed : FocusCycle::open),
      background_(description.backgroundColor),
      alpha_(description.alpha),
      blocksApplication_(description.blocksApplication),
      entrance_(description.entrance) {
    content_->setOnNeedsDisplay([this] {
        isSettled_ = false;
        emit evaluationNeeded();
    });
    interaction_.setOnNeedsDisplay([this] { emit updateNeeded(); });
    interaction_.setOnFocusChanged([this] { emit focusChanged(); });
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        presence_ = value.toDouble();
        emit moved();
    });
    // On a later turn: what is called back may delete the surface, and the animation with it.
    connect(
        &animation_, &QVariantAnimation::finished, this,
        [this] {
            layer_ = {};
            if (presence_ > 0) return;
            if (auto finished = std::exchange(finished_, {})) finished();
        },
        Qt::QueuedConnection);
}

MessageSurface::~MessageSurface() { content_->setOnNeedsDisplay({}); }

void MessageSurface::setTraits(const SceneTraits& traits) {
    traits_ = traits;
    layer_ = {};
    content_->setTraits(traits);
}

void MessageSurface::evaluate() {
    if (isGoing_) return;
    isSettled_ = true;
    content_->evaluate(measurer_);
    if (!isSettled_) return;
    layer_ = {};
    emit settled();
    emit updateNeeded();
}

// Picture

void MessageSurface::paint(QPainter& painter) {
    if (presence_ >= 1) return paintInPlace(painter);
    if (layer_.isNull()) {
        QSize pixels(static_cast<int>(std::ceil(traits_.size.width * traits_.scale)),
                     static_cast<int>(std::ceil(traits_.size.height * traits_.scale)));
        layer_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        layer_.setDevicePixelRatio(traits_.scale);
        layer_.fill(Qt::transparent);
        QPainter layerPainter(&layer_);
        paintInPlace(layerPainter);
    }
    painter.save();
    painter.setOpacity(opacity());
    painter.drawImage(displacement(), layer_);
    painter.restore();
}

void MessageSurface::paintInPlace(QPainter& painter) {
    painter.save();
    painter.setOpacity(painter.opacity() * alpha_);
    if (background_) {
        painter.fillRect(QRectF(0, 0, traits_.size.width, traits_.size.height), toQt(*background_));
    }
    painter_.paint(content_->displayList(), painter);
    painter_.paint(interaction_.decorations(), painter);
    painter.restore();
}

QPointF MessageSurface::displacement() const {
    QRectF card;
    for (const Rect& area : content_->touchAreas()) card = card.united(toQt(area));
    double missing = 1 - presence_;
    switch (entrance_) {
        case WindowEntrance::top:
            return {0, -missing * card.bottom()};
        case WindowEntrance::bottom:
            return {0, missing * (traits_.size.height - card.top())};
        case WindowEntrance::inPlace:
            return {0, missing * rise};
    }
    return {};
}

double MessageSurface::opacity() const { return entrance_ == WindowEntrance::inPlace ? presence_ : 1; }

QRegion MessageSurface::touchRegion() const {
    QRegion region;
    if (isGoing_) return region;
    for (const Rect& area : content_->touchAreas()) region += toQt(area).toAlignedRect();
    return region;
}

// Coming and going

void MessageSurface::appear() {
    presence_ = traits_.reducesMotion ? 1 : 0;
    emit moved();
    if (presence_ < 1) animateTo(1, appearMilliseconds);
    emit appeared();
}

void MessageSurface::disappear(std::function<void()> finished) {
    isGoing_ = true;
    interaction_.pointerCancelled();
    finished_ = std::move(finished);
    animateTo(0, traits_.reducesMotion ? 0 : disappearMilliseconds);
}

void MessageSurface::animateTo(double presence, int milliseconds) {
    animation_.stop();
    animation_.setStartValue(presence_);
    animation_.setEndValue(presence);
    animation_.setDuration(milliseconds);
    animation_.setEasingCurve(QEasingCurve::OutCubic);
    QMetaObject::invokeMethod(
        this, [this] { animation_.start(); }, Qt::QueuedConnection);
}

// Input

void MessageSurface::pointerDown(QPointF point) {
    if (!isGoing_) interaction_.pointerDown(fromQt(point));
}

void MessageSurface::pointerMoved(QPointF point) { interaction_.pointerMoved(fromQt(point)); }

void MessageSurface::pointerUp(QPointF point) { interaction_.pointerUp(fromQt(point)); }

void MessageSurface::pointerCancelled() { interaction_.pointerCancelled(); }

bool MessageSurface::keyDown(const QKeyEvent& event) {
    auto key = keyOf(event);
    return key && !isGoing_ && interaction_.keyDown(*key);
}

bool MessageSurface::scroll(double points) {
    if (!scrolls()) return false;
    content_->scroll(points);
    scrolled();
    return true;
}

bool MessageSurface::scrollTo(double offset) {
    if (!scrolls()) return false;
    content_->scrollTo(offset);
    scrolled();
    return true;
}

bool MessageSurface::scrolls() const { return !isGoing_ && content_->scrollArea().range > 0; }

void MessageSurface::scrolled() {
    layer_ = {};
    emit settled();
    emit updateNeeded();
}

}  // namespace vantix::qt
