#pragma once

#include "VantixQtQuick/QuickHost.h"

#include <QQmlParserStatus>
#include <QQuickItem>

#include <functional>
#include <memory>
#include <vector>

namespace vantix::qt {

/// The host as an element in QML, documented in QmlTypes.h: runs from the moment at which its properties are known.
class QmlHost : public QObject, public QQmlParserStatus, private HostOptions {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QString dataDirectory MEMBER dataDirectory)
    Q_PROPERTY(QString accountId MEMBER accountId)
    Q_PROPERTY(QString baseUrl MEMBER baseUrl)
    Q_PROPERTY(QString accessToken MEMBER accessToken)
    Q_PROPERTY(QString sslKeyHash MEMBER sslKeyHash)
    Q_PROPERTY(QString appStoreId MEMBER appStoreId)
    Q_PROPERTY(QStringList refusedSchemes MEMBER refusedSchemes)
    Q_PROPERTY(QStringList deepLinkSchemes MEMBER deepLinkSchemes)
    Q_PROPERTY(QString customerId MEMBER customerId NOTIFY customerIdChanged)
    Q_PROPERTY(bool messagesAllowed MEMBER messagesAllowed_ NOTIFY messagesAllowedChanged)
    Q_PROPERTY(double textScale MEMBER textScale_ NOTIFY textScaleChanged)
    Q_PROPERTY(bool reducesMotion MEMBER reducesMotion_ NOTIFY reducesMotionChanged)
    Q_PROPERTY(bool inForeground MEMBER inForeground_ NOTIFY inForegroundChanged)

public:
    ~QmlHost() override;

    Q_INVOKABLE bool receivePush(const QJsonObject& campaign);
    Q_INVOKABLE void captureEvent(const QString& name, const QVariantMap& attributes = {});
    Q_INVOKABLE void logOut();
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void addWindow(QQuickWindow* window);
    Q_INVOKABLE void removeWindow(QQuickWindow* window);

    void classBegin() override {}
    void componentComplete() override;

signals:
    void deepLinkActivated(const QUrl& link);
    void urlActivated(const QUrl& address);
    void messageShown(const QString& scope);
    void messageGone(const QString& scope);
    void reported(const QString& name, const QVariantMap& attributes);
    void requestSent(const QString& method, const QUrl& address, const QString& body);
    void pushRefused(const QString& whyNot);
    void customerIdChanged();
    void messagesAllowedChanged();
    void textScaleChanged();
    void reducesMotionChanged();
    void inForegroundChanged();

private:
    /// At once, or when the host is there: bindings and handlers run while the scene is still being put together.
    void perform(std::function<void()> operation);
    void relaySignals();
    void followProperties();
    void addEnclosingWindow();

    bool messagesAllowed_ = true;
    double textScale_ = 0;
    bool reducesMotion_ = false;
    bool inForeground_ = true;
    std::vector<std::function<void()>> awaited_;
    std::unique_ptr<QuickHost> host_;
};

}  // namespace vantix::qt
