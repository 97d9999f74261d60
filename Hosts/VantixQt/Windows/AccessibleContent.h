#pragma once

#include "VantixQt/Windows/AccessibleHolder.h"
#include "VantixQt/Windows/MessageSurface.h"

#include <QAccessible>
#include <QObject>
#include <QRect>

#include <optional>
#include <utility>
#include <vector>

namespace vantix::qt {

/// What is on a message, and what can be done with it, in the toolkit's terms of place and focus. GUI thread only.
class AccessibleContent final : public QObject {
    Q_OBJECT

public:
    /// The surface outlives this.
    AccessibleContent(MessageSurface& surface, AccessibleHolder holder);

    const AccessibleHolder& holder() const { return holder_; }
    bool blocksApplication() const { return surface_.blocksApplication(); }

    /// The card, which stands for the message as a whole; absent before the first layout.
    std::optional<AccessibleElement> card() const;
    /// What is met on the card, in reading order.
    std::vector<AccessibleElement> elements() const;
    std::optional<AccessibleElement> find(const ElementIdentity& identity) const;

    /// On the screen.
    QRect frame(const AccessibleElement& element) const;
    /// On the screen.
    QRect frame() const;
    /// Whether scrolling has taken the element out of sight.
    bool isOutOfSight(const AccessibleElement& element) const;

    std::optional<ElementIdentity> focused() const;
    void focus(const ElementIdentity& identity);
    void activate(const ElementIdentity& identity);
    void adjust(const ElementIdentity& identity, int steps);

    /// What the toolkit knows the elements by, once it has asked for them.
    std::vector<std::pair<ElementIdentity, QAccessible::Id>>& registered() { return registered_; }

private:
    MessageSurface& surface_;
    AccessibleHolder holder_;
    std::vector<std::pair<ElementIdentity, QAccessible::Id>> registered_;
};

}  // namespace vantix::qt
