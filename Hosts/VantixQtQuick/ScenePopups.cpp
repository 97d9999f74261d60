#include "VantixQtQuick/ScenePopups.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace vantix::qt {

namespace {

/// Above everything that the controls put into a window.
bool isControlsOverlay(const QQuickItem* item) { return item->inherits("QQuickOverlay"); }

/// Whether the popup waits for an answer; a tool tip does not. A popup owns the item that it shows.
bool isOfWaitingPopup(const QQuickItem* item) {
    const QObject* popup = item->parent();
    if (!item->isVisible() || !popup) return false;
    bool isList = popup->parent() && popup->parent()->inherits("QQuickComboBox");
    return popup->property("modal").toBool() || popup->inherits("QQuickMenu") || isList;
}

}  // namespace

QQuickItem* waitingPopup(const QQuickWindow& window) {
    const auto items = window.contentItem()->childItems();
    auto overlay = std::find_if(items.begin(), items.end(), isControlsOverlay);
    if (overlay == items.end()) return nullptr;
    const auto popups = (*overlay)->childItems();
    auto found = std::find_if(popups.begin(), popups.end(), isOfWaitingPopup);
    return found == popups.end() ? nullptr : *found;
}

}  // namespace vantix::qt
