#include "VantixQtQuick/QmlParts.h"

#include <QQmlContext>
#include <QQmlProperty>
#include <QQuickItem>

namespace vantix::qt {

namespace {

constexpr const char* flickableSource = R"(
    import QtQuick
    Flickable { visible: false; flickableDirection: Flickable.VerticalFlick; boundsBehavior: Flickable.StopAtBounds }
)";

}  // namespace

QmlParts::QmlParts() : flickable_(&engine_) { flickable_.setData(flickableSource, QUrl()); }

std::unique_ptr<QQuickItem> QmlParts::makeFlickable() {
    std::unique_ptr<QObject> made(flickable_.create());
    if (!made) qWarning("vantix::qt::QuickHost: %s", qUtf8Printable(flickable_.errorString()));
    return std::unique_ptr<QQuickItem>(static_cast<QQuickItem*>(made.release()));
}

void QmlParts::setAccessibleRole(QQuickItem& item, QAccessible::Role role) {
    QQmlProperty(&item, "Accessible.role", flickable_.creationContext()).write(role);
}

}  // namespace vantix::qt
