#include "VantixQtWidgets/WidgetsHost.h"

#include "VantixQt/HostRun.h"
#include "VantixQt/Windows/Surroundings.h"
#include "VantixQtWidgets/WidgetScene.h"

#include <QApplication>

namespace vantix::qt {

WidgetsHost::WidgetsHost(const HostOptions& options, QObject* parent) : Host(options, parent) {
    run().surroundings().setReducesMotion(!QApplication::isEffectEnabled(Qt::UI_General));
}

WidgetsHost::~WidgetsHost() = default;

void WidgetsHost::addWindow(QWidget* window) {
    QWidget* top = window->window();
    if (WidgetScene::of(top)) return;
    run().addScene(std::make_shared<WidgetScene>(top, run().sceneServices()));
}

void WidgetsHost::removeWindow(QWidget* window) {
    if (auto scene = WidgetScene::of(window->window())) scene->end();
}

}  // namespace vantix::qt
