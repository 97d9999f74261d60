#include "VantixQt/Windows/AccessibleMessage.h"

#include "VantixQt/Windows/AccessibleInterfaces.h"

#include <QAccessible>
#include <QHash>

#include <algorithm>
#include <utility>

namespace vantix::qt {

namespace {

/// By holder.
QHash<QObject*, AccessibleContent*>& contents() {
    static auto& all = *new QHash<QObject*, AccessibleContent*>;
    return all;
}

QAccessibleInterface* interfaceOfHolder(const QString&, QObject* object) {
    auto content = contents().value(object);
    return content ? makeMessageInterface(*content) : nullptr;
}

bool haveSameIdentities(const std::vector<AccessibleElement>& a, const std::vector<AccessibleElement>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& one, const auto& other) { return one.identity() == other.identity(); });
}

/// `meant` is an object or an interface.
template <typename Meant>
void tell(Meant* meant, QAccessible::Event type) {
    QAccessibleEvent event(meant, type);
    QAccessible::updateAccessibility(&event);
}

void tellChange(QAccessibleInterface* element, const AccessibleElement& before, const AccessibleElement& now) {
    if (!element) return;
    if (before.selected != now.selected) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(element, changed);
        QAccessible::updateAccessibility(&event);
    }
    if (now.isAdjustable() && before.value != now.value) {
        QAccessibleValueChangeEvent event(element, now.progress.value_or(Progress()).number);
        QAccessible::updateAccessibility(&event);
    }
}

}  // namespace

AccessibleMessage::AccessibleMessage(MessageSurface& surface, AccessibleHolder holder)
    : content_(std::make_unique<AccessibleContent>(surface, std::move(holder))) {
    QAccessible::installFactory(interfaceOfHolder);
    contents().insert(content_->holder().object, content_.get());
    connect(&surface, &MessageSurface::appeared, this, &AccessibleMessage::tellAppearance);
    connect(&surface, &MessageSurface::focusChanged, this, &AccessibleMessage::tellFocus);
    connect(&surface, &MessageSurface::settled, this, &AccessibleMessage::tellChanges);
}

AccessibleMessage::~AccessibleMessage() {
    contents().remove(content_->holder().object);
    if (contents().isEmpty()) QAccessible::removeFactory(interfaceOfHolder);
    releaseAllElements(*content_);
}

void AccessibleMessage::tellAppearance() {
    if (!QAccessible::isActive()) return;
    QObject* object = content_->holder().object;
    tell(object, QAccessible::ObjectShow);
    tell(object, QAccessible::Alert);
    if (content_->blocksApplication()) tell(object, QAccessible::DialogStart);
}

void AccessibleMessage::tellFocus() {
    if (!QAccessible::isActive()) return;
    auto focused = content_->focused();
    auto element = focused ? elementInterface(*content_, *focused) : nullptr;
    if (element) {
        tell(element, QAccessible::Focus);
    } else if (content_->holder().hasFocus()) {
        tell(content_->holder().object, QAccessible::Focus);
    }
}

void AccessibleMessage::tellChanges() {
    if (!QAccessible::isActive()) return;
    auto before = std::exchange(told_, content_->elements());
    if (!haveSameIdentities(before, told_)) {
        releaseGoneElements(*content_);
        return tell(content_->holder().object, QAccessible::ObjectReorder);
    }
    for (std::size_t index = 0; index < told_.size(); ++index) {
        tellChange(elementInterface(*content_, told_[index].identity()), before[index], told_[index]);
    }
}

}  // namespace vantix::qt
