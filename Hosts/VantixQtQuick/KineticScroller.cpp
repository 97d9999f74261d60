#include "VantixQtQuick/KineticScroller.h"

#include "VantixQt/Drawing/QtConversions.h"
#include "VantixQt/Windows/MessageSurface.h"

#include <QCoreApplication>
#include <QQuickItem>

#include <cmath>
#include <utility>

namespace vantix::qt {

namespace {

/// Points by which two places may differ and are still the same.
constexpr double tolerance = 0.01;

}  // namespace

KineticScroller::KineticScroller(MessageSurface& surface, std::unique_ptr<QQuickItem> flickable)
    : surface_(surface), flickable_(std::move(flickable)) {
    if (!flickable_) return;
    connect(&surface_, &MessageSurface::settled, this, &KineticScroller::follow);
    connect(&surface_, &MessageSurface::updateNeeded, this, &KineticScroller::follow);
    connect(flickable_.get(), SIGNAL(contentYChanged()), this, SLOT(scroll()));
    connect(flickable_.get(), SIGNAL(dragStarted()), this, SIGNAL(dragged()));
}

KineticScroller::~KineticScroller() = default;

bool KineticScroller::isFlicking() const { return flickable_ && flickable_->property("flicking").toBool(); }

void KineticScroller::pointer(PointerPhase phase, QPointF position, QEvent& event) {
    auto area = surface_.content().scrollArea();
    if (phase == PointerPhase::down) isInside_ = area.range > 0 && toQt(area.viewport).contains(position);
    if (isInside_ && flickable_) QCoreApplication::sendEvent(flickable_.get(), &event);
}

void KineticScroller::wheel(QEvent& event) {
    if (flickable_) QCoreApplication::sendEvent(flickable_.get(), &event);
}

void KineticScroller::follow() {
    auto area = surface_.content().scrollArea();
    flickable_->setSize({area.viewport.size.width, area.viewport.size.height});
    flickable_->setProperty("contentHeight", area.viewport.size.height + area.range);
    if (std::abs(flickable_->property("contentY").toDouble() - area.offset) <= tolerance) return;
    // Scrolled by keys, or because something was brought into sight.
    QMetaObject::invokeMethod(flickable_.get(), "cancelFlick");
    flickable_->setProperty("contentY", area.offset);
}

void KineticScroller::scroll() {
    double offset = flickable_->property("contentY").toDouble();
    if (std::abs(offset - surface_.content().scrollArea().offset) > tolerance) surface_.scrollTo(offset);
}

}  // namespace vantix::qt
