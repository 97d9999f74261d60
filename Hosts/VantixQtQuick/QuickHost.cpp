#include "VantixQtQuick/QuickHost.h"

#include "VantixQt/HostRun.h"
#include "VantixQtQuick/QmlParts.h"
#include "VantixQtQuick/QuickScene.h"

namespace vantix::qt {

QuickHost::QuickHost(const HostOptions& options, QObject* parent)
    : Host(options, parent), parts_(std::make_shared<QmlParts>()) {}

QuickHost::~QuickHost() = default;

void QuickHost::addWindow(QQuickWindow* window) {
    if (!window || scenes_.contains(window)) return;
    auto scene = std::make_shared<QuickScene>(window, run().sceneServices(), parts_);
    scenes_.insert(window, scene);
    connect(scene.get(), &WindowScene::ended, this, [this, window] { scenes_.remove(window); });
    run().addScene(scene);
}

void QuickHost::removeWindow(QQuickWindow* window) {
    if (auto scene = scenes_.value(window).lock()) scene->end();
}

}  // namespace vantix::qt
