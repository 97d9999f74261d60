#include "VantixQtWidgets/WidgetScene.h"

#include "VantixQtWidgets/MessageWidget.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace vantix::qt {

namespace {

constexpr const char* sceneProperty = "_vantix_scene";

class WidgetOverlay final : public MessageOverlay {
public:
    WidgetOverlay(QWidget& window, std::unique_ptr<MessageSurface> surface)
        : widget_(new MessageWidget(window, std::move(surface))) {}
    ~WidgetOverlay() override {
        if (widget_) widget_->giveFocusBack();
        delete widget_;
    }

    void leave(std::function<void()> finished) override {
        if (widget_) widget_->leave(std::move(finished));
    }

private:
    /// The window's, which may take it along.
    QPointer<MessageWidget> widget_;
};

/// Whether windows of this kind come before others.
bool mayCover(const QWidget& window) {
    return window.isWindow() && (window.isModal() || window.windowType() == Qt::Popup);
}

/// Whether the other window keeps input from this one.
bool isBlocked(const QWidget& window, const QWidget& other) {
    if (!other.isModal() || !other.isVisible() || &other == &window || other.isAncestorOf(&window)) return false;
    if (other.windowModality() == Qt::ApplicationModal) return true;
    const QWidget* owner = other.parentWidget();
    while (owner && owner->window() != &window) owner = owner->window()->parentWidget();
    return owner;
}

}  // namespace

WidgetScene::WidgetScene(QWidget* window, SceneServices services) : WindowScene(std::move(services)), window_(window) {
    window->setProperty(sceneProperty, QVariant::fromValue<QObject*>(this));
    qApp->installEventFilter(this);
    connect(window, &QObject::destroyed, this, &WidgetScene::end);
}

WidgetScene::~WidgetScene() {
    if (window_) window_->setProperty(sceneProperty, {});
}

WidgetScene* WidgetScene::of(const QWidget* window) {
    return qobject_cast<WidgetScene*>(window->property(sceneProperty).value<QObject*>());
}

bool WidgetScene::isShown() const { return window_ && window_->isVisible(); }

bool WidgetScene::isMinimized() const { return window_->window()->isMinimized(); }

bool WidgetScene::isReady() const {
    if (!isVisible() || QApplication::activePopupWidget()) return false;
    const auto windows = QApplication::topLevelWidgets();
    return std::none_of(windows.begin(), windows.end(),
                        [&](QWidget* other) { return isBlocked(*window_->window(), *other); });
}

QSizeF WidgetScene::size() const { return window_->size(); }

qreal WidgetScene::devicePixelRatio() const { return window_->devicePixelRatioF(); }

std::unique_ptr<MessageOverlay> WidgetScene::makeOverlay(std::unique_ptr<MessageSurface> surface) {
    return window_ ? std::make_unique<WidgetOverlay>(*window_, std::move(surface)) : nullptr;
}

bool WidgetScene::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_) {
        windowEvent(*event);
    } else if (event->type() == QEvent::Hide && watched->isWidgetType() && mayCover(*static_cast<QWidget*>(watched))) {
        announceLater();
    }
    return false;
}

void WidgetScene::windowEvent(const QEvent& event) {
    switch (event.type()) {
        case QEvent::Resize:
        case QEvent::ScreenChangeInternal:
            geometryChanged();
            break;
        case QEvent::WindowActivate:
            emit activated();
            break;
        case QEvent::Show:
        case QEvent::WindowStateChange:
            announceLater();
            break;
        case QEvent::Close:
            windowCloses();
            break;
        case QEvent::Hide:
            if (!event.spontaneous()) windowHidden();
            break;
        default:
            break;
    }
}

}  // namespace vantix::qt
