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
    bool isShown() const override;
    bool isMinimized() const override;
    QSizeF size() const override;
    qreal devicePixelRatio() const override;
    std::unique_ptr<MessageOverlay> makeOverlay(std::unique_ptr<MessageSurface> surface) override;

private:
    void followScreen();

    QPointer<QQuickWindow> window_;
    QPointer<QScreen> screen_;
    std::shared_ptr<QmlParts> parts_;
};

}  // namespace vantix::qt
