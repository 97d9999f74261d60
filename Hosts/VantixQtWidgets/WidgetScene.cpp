#include "VantixQtWidgets/WidgetScene.h"

#include "VantixQtWidgets/MessageWidget.h"

#include <QApplication>
#include <QEvent>

#include <utility>

namespace vantix::qt {

namespace {

constexpr const char* sceneProperty = "_vantix_scene";

class WidgetOverlay final : public MessageOverlay {
public:
    WidgetOverlay(QWidget& window, std::unique_ptr<MessageSurface> surface)
        : widget_(new MessageWidget(window, std::move(surface))) {}
    ~WidgetOverlay() override { delete widget_; }

    void leave(std::function<void()> finished) override {
        if (widget_) widget_->leave(std::move(finished));
    }

private:
    /// The window's, which may take it along.
    QPointer<MessageWidget> widget_;
};

}  // namespace

WidgetScene::WidgetScene(QWidget* window, SceneServices services)
    : WindowScene(std::move(services)), window_(window) {
    window->setProperty(sceneProperty, QVariant::fromValue<QObject*>(this));
    window->installEventFilter(this);
    qApp->installEventFilter(this);
    connect(window, &QObject::destroyed, this, &WidgetScene::end);
}

WidgetScene::~WidgetScene() {
    if (window_) window_->setProperty(sceneProperty, {});
}

WidgetScene* WidgetScene::of(const QWidget* window) {
    return qobject_cast<WidgetScene*>(window->property(sceneProperty).value<QObject*>());
}

bool WidgetScene::isVisible() const { return window_ && window_->isVisible() && !window_->window()->isMinimized(); }

bool WidgetScene::isReady() const {
    QWidget* modal = QApplication::activeModalWidget();
    bool isCovered = modal && modal != window_->window();
    return isVisible() && !isCovered && !QApplication::activePopupWidget();
}

QSizeF WidgetScene::size() const { return window_->size(); }

qreal WidgetScene::devicePixelRatio() const { return window_->devicePixelRatioF(); }

std::unique_ptr<MessageOverlay> WidgetScene::makeOverlay(std::unique_ptr<MessageSurface> surface) {
    return window_ ? std::make_unique<WidgetOverlay>(*window_, std::move(surface)) : nullptr;
}

bool WidgetScene::eventFilter(QObject* watched, QEvent* event) {
    bool isOwn = watched == window_;
    switch (event->type()) {
        case QEvent::Resize:
        case QEvent::ScreenChangeInternal:
            if (isOwn) geometryChanged();
            break;
        case QEvent::WindowActivate:
        case QEvent::WindowUnblocked:
        case QEvent::Show:
            if (isOwn) emit activated();
            break;
        case QEvent::Close:
            break;
        default:
            break;
    }
    return false;
}

}  // namespace vantix::qt
