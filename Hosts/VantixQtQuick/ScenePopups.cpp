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

QQuickItem* modalPopup(const QQuickWindow& window) {
    const auto items = window.contentItem()->childItems();
    auto overlay = std::find_if(items.begin(), items.end(), isControlsOverlay);
    if (overlay == items.end()) return nullptr;
    const auto popups = (*overlay)->childItems();
    auto found = std::find_if(popups.begin(), popups.end(), isOfModalPopup);
    return found == popups.end() ? nullptr : *found;
}

}  // namespace vantix::qt
