#include "VantixQt/Drawing/QtEnvironment.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <mutex>

namespace vantix {

void QtEnvironment::start() {
    if (QGuiApplication::instance()) return;
    silenceWarnings();
    static int argumentCount = 3;
    static char arguments[][12] = {"vantix", "-platform", "offscreen"};
    static char* argumentList[] = {arguments[0], arguments[1], arguments[2], nullptr};
    // Never destroyed: texts and pictures that outlive main() still need it.
    static auto* application = new QGuiApplication(argumentCount, argumentList);
    static_cast<void>(application);
}

void QtEnvironment::silenceWarnings() {
    static std::once_flag once;
    std::call_once(once, [] { QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n*.warning=false"); });
}

}  // namespace vantix
