#pragma once

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

class QQuickItem;

namespace vantix::qt {

/// What the toolkit offers in QML only. GUI thread only; lives as long as what it made.
class QmlParts {
public:
    QmlParts();
    ~QmlParts();

    /// A Flickable that is seen and met by nobody. Null when the QML module QtQuick is not installed.
    std::unique_ptr<QQuickItem> makeFlickable(QQuickItem& parent);
    /// The toolkit offers the item to assistive technology, which it does with none unasked.
    void setAccessibleRole(QQuickItem& item, QAccessible::Role role);

private:
    QQmlEngine engine_;
    QQmlComponent flickable_;
    /// Knows the module's names.
    std::unique_ptr<QObject> sample_;
};

}  // namespace vantix::qt
