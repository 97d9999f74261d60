#include "VantixQtQuick/ScenePopups.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace vantix::qt {

namespace {

/// Above everything that the controls put into a window.
bool isControlsOverlay(const QQuickItem* item) { return item->inherits("QQuickOverlay"); }

/// A popup owns the item that it shows.
bool isOfModalPopup(const QQuickItem* item) {
    return item->isVisible() && item->parent() && item->parent()->property("modal").toBool();
}

}  // namespace

bool hasModalPopup(const QQuickWindow& window) {
    const auto items = window.contentItem()->childItems();
    auto overlay = std::find_if(items.begin(), items.end(), isControlsOverlay);
    if (overlay == items.end()) return false;
    const auto popups = (*overlay)->childItems();
    return std::any_of(popups.begin(), popups.end(), isOfModalPopup);
}

}  // namespace vantix::qt
