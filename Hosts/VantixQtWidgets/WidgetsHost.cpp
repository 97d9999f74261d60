#include "VantixQtWidgets/WidgetsHost.h"

#include "VantixQt/HostRun.h"
#include "VantixQtWidgets/WidgetScene.h"

namespace vantix::qt {

WidgetsHost::WidgetsHost(const HostOptions& options, QObject* parent) : Host(options, parent) {}

WidgetsHost::~WidgetsHost() = default;

void WidgetsHost::addWindow(QWidget* window) {
    if (window) sceneOf(window->window());
}

void WidgetsHost::addScreen(QWidget* screen, const QMargins& safeArea) {
    if (!screen) return;
    sceneOf(screen).setSafeArea({static_cast<double>(safeArea.top()), static_cast<double>(safeArea.left()),
                                 static_cast<double>(safeArea.bottom()), static_cast<double>(safeArea.right())});
}

void WidgetsHost::removeWindow(QWidget* window) {
    if (!window) return;
    auto screen = WidgetScene::of(window);
    if (auto scene = screen ? screen : WidgetScene::of(window->window())) scene->end();
}

WidgetScene& WidgetsHost::sceneOf(QWidget* widget) {
    if (auto scene = WidgetScene::of(widget)) return *scene;
    auto scene = std::make_shared<WidgetScene>(widget, run().sceneServices());
    run().addScene(scene);
    return *scene;
}

}  // namespace vantix::qt
