#include "VantixQtQuick/QmlTypes.h"

#include "VantixQtQuick/QmlHost.h"

#include <qqml.h>

namespace vantix::qt {

void registerQmlTypes() { qmlRegisterType<QmlHost>("Vantix.InAppMessage", 1, 0, "QuickHost"); }

}  // namespace vantix::qt
