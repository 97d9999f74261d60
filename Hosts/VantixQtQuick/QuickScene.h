#pragma once

#include "VantixQt/Windows/WindowScene.h"

#include <QPointer>
#include <QQuickWindow>
#include <QScreen>

#include <memory>

namespace vantix::qt {

class QmlParts;

/// A Quick window as a scene. GUI thread only.
class QuickScene final : public WindowScene {
    Q_OBJECT

public:
    QuickScene(QQuickWindow* window, SceneServices services, std::shared_ptr<QmlParts> parts);

    bool isReady() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool isVisible() const override;
    QSizeF size() const override;
    qreal devicePixelRatio() const override;
    std::unique_ptr<MessageOverlay> makeOverlay(std::unique_ptr<MessageSurface> surface) override;

private:
    /// A window that is hidden while it closes may be the last one: there is no later turn to tell of the end.
    void followClosing();
    void followScreen();
    void windowHidden();
    void announceLater();

    QPointer<QQuickWindow> window_;
    QPointer<QScreen> screen_;
    bool isClosing_ = false;
    std::shared_ptr<QmlParts> parts_;
};

}  // namespace vantix::qt
