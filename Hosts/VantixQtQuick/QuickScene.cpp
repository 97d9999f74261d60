#include "VantixQtQuick/QuickScene.h"

#include "VantixQtQuick/MessageItem.h"
#include "VantixQtQuick/ScenePopups.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace vantix::qt {

namespace {

class ItemOverlay final : public MessageOverlay {
public:
    explicit ItemOverlay(std::unique_ptr<MessageItem> item) : item_(std::move(item)) {}

    void leave(std::function<void()> finished) override { item_->leave(std::move(finished)); }

private:
    std::unique_ptr<MessageItem> item_;
};

bool mayCover(const QWindow& window) { return window.modality() != Qt::NonModal || window.type() == Qt::Popup; }

/// Whether the other window keeps input from this one.
bool isBlocked(const QWindow& window, const QWindow& other) {
    if (!other.isVisible() || &other == &window || other.isAncestorOf(&window, QWindow::IncludeTransients))
        return false;
    if (other.type() == Qt::Popup || other.modality() == Qt::ApplicationModal) return true;
    return other.modality() == Qt::WindowModal && window.isAncestorOf(&other, QWindow::IncludeTransients);
}

}  // namespace

QuickScene::QuickScene(QQuickWindow* window, SceneServices services, std::shared_ptr<QmlParts> parts)
    : WindowScene(std::move(services)), window_(window), parts_(std::move(parts)) {
    qGuiApp->installEventFilter(this);
    connect(window, &QObject::destroyed, this, &QuickScene::end);
    connect(window, &QWindow::widthChanged, this, &QuickScene::geometryChanged);
    connect(window, &QWindow::heightChanged, this, &QuickScene::geometryChanged);
    connect(window, &QWindow::screenChanged, this, &QuickScene::followScreen);
    followScreen();
    connect(window, &QWindow::visibilityChanged, this, &QuickScene::announceLater);
    connect(window, &QWindow::activeChanged, this, [this] {
        if (window_->isActive()) emit activated();
    });
}

void QuickScene::followScreen() {
    if (screen_) disconnect(screen_, nullptr, this, nullptr);
    screen_ = window_->screen();
    // A screen whose scale is changed tells of its size and density.
    connect(screen_, &QScreen::geometryChanged, this, &QuickScene::geometryChanged);
    connect(screen_, &QScreen::logicalDotsPerInchChanged, this, &QuickScene::geometryChanged);
    geometryChanged();
}

bool QuickScene::isShown() const { return window_ && window_->isVisible(); }

bool QuickScene::isMinimized() const { return window_->windowStates().testFlag(Qt::WindowMinimized); }

bool QuickScene::isReady() const {
    if (!isVisible()) return false;
    if (auto popup = waitingPopup(*window_)) {
        connect(popup, &QQuickItem::visibleChanged, this, &QuickScene::announceLater, Qt::UniqueConnection);
        return false;
    }
    const auto windows = QGuiApplication::topLevelWindows();
    return std::none_of(windows.begin(), windows.end(), [&](QWindow* other) { return isBlocked(*window_, *other); });
}

QSizeF QuickScene::size() const { return window_->size(); }

qreal QuickScene::devicePixelRatio() const { return window_->effectiveDevicePixelRatio(); }

std::unique_ptr<MessageOverlay> QuickScene::makeOverlay(std::unique_ptr<MessageSurface> surface) {
    if (!window_) return nullptr;
    return std::make_unique<ItemOverlay>(std::make_unique<MessageItem>(*window_, std::move(surface), parts_));
}

bool QuickScene::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_ && event->type() == QEvent::Close) windowCloses();
    if (event->type() != QEvent::Hide) return false;
    if (watched == window_) {
        windowHidden();
    } else if (watched->isWindowType() && mayCover(*static_cast<QWindow*>(watched))) {
        announceLater();
    }
    return false;
}

}  // namespace vantix::qt
