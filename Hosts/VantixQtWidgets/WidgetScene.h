#pragma once

#include "VantixQt/Windows/WindowScene.h"

#include <QPointer>
#include <QWidget>

namespace vantix::qt {

/// A widget as a scene: a window, or a part of one that messages cover alone. GUI thread only.
class WidgetScene final : public WindowScene {
    Q_OBJECT

public:
    WidgetScene(QWidget* window, SceneServices services);
    ~WidgetScene() override;

    /// The scene that the window is; null when it is none.
    static WidgetScene* of(const QWidget* window);

    bool isReady() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool isShown() const override;
    bool isMinimized() const override;
    QSizeF size() const override;
    qreal devicePixelRatio() const override;
    std::unique_ptr<MessageOverlay> makeOverlay(std::unique_ptr<MessageSurface> surface) override;

private:
    void windowEvent(const QEvent& event);

    QPointer<QWidget> window_;
};

}  // namespace vantix::qt
