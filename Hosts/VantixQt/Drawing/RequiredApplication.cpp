#include "VantixQt/Drawing/RequiredApplication.h"

#include "Platform/Values/FatalError.h"

#include <QGuiApplication>

namespace vantix {

void requireApplication(const std::string& part) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return;
    fatalError(part + ": make the QGuiApplication (or QApplication) first");
}

}  // namespace vantix
