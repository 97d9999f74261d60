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

QmlParts::QmlParts() : flickable_(&engine_) {
    flickable_.setData(flickableSource, QUrl());
    sample_.reset(flickable_.create());
    if (!sample_) qWarning("vantix::qt::QuickHost: %s", qUtf8Printable(flickable_.errorString()));
}

QmlParts::~QmlParts() = default;

std::unique_ptr<QQuickItem> QmlParts::makeFlickable(QQuickItem& parent) {
    std::unique_ptr<QQuickItem> flickable(static_cast<QQuickItem*>(flickable_.create()));
    if (flickable) flickable->setParentItem(&parent);
    return flickable;
}

void QmlParts::setAccessibleRole(QQuickItem& item, QAccessible::Role role) {
    QQmlProperty(&item, "Accessible.role", qmlContext(sample_.get())).write(role);
}

}  // namespace vantix::qt
