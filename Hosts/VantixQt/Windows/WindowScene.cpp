#include "VantixQt/Windows/WindowScene.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixQt/Windows/Surroundings.h"
#include "VantixQt/Windows/TranslatedWords.h"

#include <QLocale>

#include <utility>

namespace vantix::qt {

class WindowScene::SceneWindow final : public Window {
public:
    SceneWindow(std::weak_ptr<WindowScene> scene, std::shared_ptr<HostedView> content)
        : scene_(std::move(scene)), content_(std::move(content)) {}
    ~SceneWindow() override { SceneWindow::removeFromSuperview(); }

    void removeFromSuperview() override {
        auto content = std::exchange(content_, nullptr);
        auto scene = scene_.lock();
        if (scene && content) scene->remove(*content);
    }

private:
    std::weak_ptr<WindowScene> scene_;
    std::shared_ptr<HostedView> content_;
};

WindowScene::WindowScene(SceneServices services) : services_(std::move(services)) {
    connect(services_.surroundings.get(), &Surroundings::changed, this, &WindowScene::geometryChanged);
}

WindowScene::~WindowScene() = default;

SceneActivationState WindowScene::activationState() const {
    return isVisible() ? SceneActivationState::foregroundActive : SceneActivationState::background;
}

SceneTraits WindowScene::traits() const {
    SceneTraits traits = services_.surroundings->traits();
    traits.size = {size().width(), size().height()};
    traits.scale = devicePixelRatio();
    traits.safeArea = safeArea_;
    return traits;
}

void WindowScene::setSafeArea(const EdgeInsets& safeArea) {
    safeArea_ = safeArea;
    geometryChanged();
}

std::unique_ptr<Window> WindowScene::makeWindow(WindowDescription description) {
    auto content = std::dynamic_pointer_cast<HostedView>(description.rootContent);
    if (!content) return nullptr;
    auto surface = std::make_unique<MessageSurface>(description, content, *services_.measurer, *services_.painter);
    content->setSpokenWords(translatedSpokenWords(QLocale()));
    surface->setTraits(traits());
    surface_ = surface.get();
    connect(surface_, &MessageSurface::evaluationNeeded, this, &WindowScene::evaluateOnNextTurn);
    overlay_ = makeOverlay(std::move(surface));
    if (!overlay_) return nullptr;
    onEnded_ = std::move(description.onEnded);
    evaluateOnNextTurn();
    return std::make_unique<SceneWindow>(weak_from_this(), std::move(content));
}

void WindowScene::evaluateOnNextTurn() {
    services_.dispatcher->mainQueue().async([surface = surface_] {
        if (surface) surface->evaluate();
    });
}

void WindowScene::geometryChanged() {
    if (surface_) surface_->setTraits(traits());
}

void WindowScene::remove(const HostedView& content) {
    if (!surface_ || &surface_->content() != &content) return;
    onEnded_ = {};
    surface_ = nullptr;
    auto leaving = leaving_.insert(leaving_.end(), std::move(overlay_));
    (*leaving)->leave([this, leaving] { leaving_.erase(leaving); });
}

void WindowScene::windowCloses() {
    isClosing_ = true;
    QMetaObject::invokeMethod(
        this, [this] { isClosing_ = false; }, Qt::QueuedConnection);
}

void WindowScene::windowHidden() {
    // The last window that closes leaves no later turn.
    if (isClosing_) return endMessage();
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!isShown()) endMessage();
        },
        Qt::QueuedConnection);
}

void WindowScene::announceLater() { QMetaObject::invokeMethod(this, &WindowScene::available, Qt::QueuedConnection); }

void WindowScene::endMessage() {
    leaving_.clear();
    overlay_ = nullptr;
    if (auto onEnded = std::exchange(onEnded_, {})) onEnded();
}

void WindowScene::end() {
    auto alive = shared_from_this();
    emit ended();
    endMessage();
}

}  // namespace vantix::qt
