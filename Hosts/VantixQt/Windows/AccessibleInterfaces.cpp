#include "VantixQt/Windows/AccessibleInterfaces.h"

#include <QAccessibleObject>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace vantix::qt {

namespace {

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

QAccessible::Role roleOf(const AccessibleElement& element) {
    switch (element.kind) {
        case AccessibleKind::heading:
            return QAccessible::Heading;
        case AccessibleKind::image:
            return element.isEnabled ? QAccessible::Button : QAccessible::Graphic;
        case AccessibleKind::button:
            return QAccessible::Button;
        case AccessibleKind::radioButton:
            return QAccessible::RadioButton;
        case AccessibleKind::checkBox:
            return QAccessible::CheckBox;
        case AccessibleKind::adjustable:
            return QAccessible::Slider;
        case AccessibleKind::dialog:
            return QAccessible::Dialog;
        case AccessibleKind::text:
        case AccessibleKind::none:
            return QAccessible::StaticText;
    }
    return QAccessible::StaticText;
}

bool isControl(const AccessibleElement& element) {
    switch (element.kind) {
        case AccessibleKind::button:
        case AccessibleKind::radioButton:
        case AccessibleKind::checkBox:
            return true;
        default:
            return false;
    }
}

/// One element on the card. It looks the element up anew at each question: the same element may have been laid out
/// again, or be gone.
class ElementInterface final : public QAccessibleInterface,
                               public QAccessibleActionInterface,
                               public QAccessibleValueInterface {
public:
    ElementInterface(AccessibleContent& content, const ElementIdentity& identity)
        : content_(&content), identity_(identity) {}

    bool isValid() const override { return element().has_value(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return content_ ? content_->holder().window() : nullptr; }
    QAccessibleInterface* parent() const override {
        return content_ ? QAccessible::queryAccessibleInterface(content_->holder().object) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QAccessible::Role role() const override {
        auto shown = element();
        return shown ? roleOf(*shown) : QAccessible::NoRole;
    }

    QString text(QAccessible::Text kind) const override {
        auto shown = element();
        if (!shown) return {};
        switch (kind) {
            case QAccessible::Name:
                return qt::text(shown->name);
            case QAccessible::Value:
            case QAccessible::Description:
                return qt::text(shown->value);
            default:
                return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        auto shown = element();
        return shown ? content_->frame(*shown) : QRect();
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        auto shown = element();
        if (!shown) {
            state.invalid = true;
            return state;
        }
        state.focusable = shown->isFocusable();
        state.focused = content_->focused() == identity_;
        state.disabled = isControl(*shown) && !shown->isEnabled;
        state.readOnly = !isControl(*shown) && !shown->isAdjustable();
        state.offscreen = content_->isOutOfSight(*shown);
        if (shown->selected) {
            state.checkable = true;
            state.checked = *shown->selected;
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        auto shown = element();
        if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
        if (type == QAccessible::ValueInterface && shown && shown->isAdjustable()) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return nullptr;
    }

    // Actions

    QStringList actionNames() const override {
        auto shown = element();
        QStringList names;
        if (!shown) return names;
        if (shown->isEnabled && takesTaps(shown->role)) names << pressAction();
        if (shown->isAdjustable()) names << increaseAction() << decreaseAction();
        if (shown->isFocusable()) names << setFocusAction();
        return names;
    }

    void doAction(const QString& name) override {
        if (!content_) return;
        if (name == pressAction()) content_->activate(identity_);
        if (name == increaseAction()) content_->adjust(identity_, 1);
        if (name == decreaseAction()) content_->adjust(identity_, -1);
        if (name == setFocusAction()) content_->focus(identity_);
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    // Value

    QVariant currentValue() const override { return progress().number; }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return progress().total; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant& value) override {
        if (content_) content_->adjust(identity_, qRound(value.toDouble()) - progress().number);
    }

private:
    std::optional<AccessibleElement> element() const { return content_ ? content_->find(identity_) : std::nullopt; }

    Progress progress() const {
        auto shown = element();
        return shown ? shown->progress.value_or(Progress()) : Progress();
    }

    QPointer<AccessibleContent> content_;
    ElementIdentity identity_;
};

class MessageInterface final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit MessageInterface(AccessibleContent& content)
        : QAccessibleObject(content.holder().object), content_(&content) {}

    bool isValid() const override { return content_ && QAccessibleObject::isValid(); }
    QWindow* window() const override { return content_ ? content_->holder().window() : nullptr; }
    QAccessibleInterface* parent() const override {
        QObject* owner = content_ ? content_->holder().parent() : nullptr;
        return owner ? QAccessible::queryAccessibleInterface(owner) : nullptr;
    }

    int childCount() const override { return content_ ? static_cast<int>(content_->elements().size()) : 0; }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        return interfaceOf(content_->elements()[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (this->child(index) == child) return index;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        if (!content_) return nullptr;
        auto elements = content_->elements();
        auto met = std::find_if(elements.rbegin(), elements.rend(), [&](const AccessibleElement& element) {
            return !content_->isOutOfSight(element) && content_->frame(element).contains(x, y);
        });
        return met == elements.rend() ? nullptr : interfaceOf(*met);
    }
    QAccessibleInterface* focusChild() const override {
        auto focused = content_ ? content_->focused() : std::nullopt;
        return focused ? elementInterface(*content_, *focused) : nullptr;
    }

    QAccessible::Role role() const override {
        return content_ && content_->blocksApplication() ? QAccessible::Dialog : QAccessible::AlertMessage;
    }
    QString text(QAccessible::Text kind) const override {
        auto card = content_ ? content_->card() : std::nullopt;
        return card && kind == QAccessible::Name ? qt::text(card->name) : QString();
    }
    QRect rect() const override { return content_ ? content_->frame() : QRect(); }
    QAccessible::State state() const override {
        QAccessible::State state;
        if (!content_) {
            state.invalid = true;
            return state;
        }
        state.modal = content_->blocksApplication();
        state.active = state.modal;
        state.focusable = state.modal;
        state.focused = content_->holder().hasFocus() && !content_->focused();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override {
        auto card = content_ ? content_->card() : std::nullopt;
        return card && card->isEnabled ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (content_ && name == pressAction()) content_->activate({Role::card, 0});
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAccessibleInterface* interfaceOf(const AccessibleElement& element) const {
        return elementInterface(*content_, element.identity());
    }

    QPointer<AccessibleContent> content_;
};

template <typename IsReleased>
void release(AccessibleContent& content, IsReleased isReleased) {
    std::erase_if(content.registered(), [&](const auto& entry) {
        if (!isReleased(entry.first)) return false;
        QAccessible::deleteAccessibleInterface(entry.second);
        return true;
    });
}

}  // namespace

QAccessibleInterface* makeMessageInterface(AccessibleContent& content) { return new MessageInterface(content); }

QAccessibleInterface* elementInterface(AccessibleContent& content, const ElementIdentity& identity) {
    auto& known = content.registered();
    auto found = std::find_if(known.begin(), known.end(), [&](const auto& entry) { return entry.first == identity; });
    if (found != known.end()) return QAccessible::accessibleInterface(found->second);
    if (!content.find(identity)) return nullptr;
    auto made = new ElementInterface(content, identity);
    known.emplace_back(identity, QAccessible::registerAccessibleInterface(made));
    return made;
}

void releaseGoneElements(AccessibleContent& content) {
    release(content, [&](const ElementIdentity& identity) { return !content.find(identity); });
}

void releaseAllElements(AccessibleContent& content) {
    release(content, [](const ElementIdentity&) { return true; });
}

}  // namespace vantix::qt
