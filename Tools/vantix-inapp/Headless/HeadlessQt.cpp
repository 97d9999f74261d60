#include "Tools/vantix-inapp/Headless/HeadlessQt.h"

#include <QGuiApplication>
#include <QLoggingCategory>

namespace vantix {

void startHeadlessQt() {
    if (QGuiApplication::instance()) return;
    QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n*.warning=false");
    static int argumentCount = 3;
    static char arguments[][12] = {"vantix", "-platform", "offscreen"};
    static char* argumentList[] = {arguments[0], arguments[1], arguments[2], nullptr};
    // Never destroyed: texts and pictures that outlive main() still need it.
    static auto* application = new QGuiApplication(argumentCount, argumentList);
    static_cast<void>(application);
}

}  // namespace vantix
