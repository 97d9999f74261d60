#pragma once

#include "VantixQt/Windows/AccessibleContent.h"

#include <QAccessibleInterface>

namespace vantix::qt {

/// The interface of the message as a whole, a dialog or, when the application stays in reach, an alert. The toolkit
/// owns it.
QAccessibleInterface* makeMessageInterface(AccessibleContent& content);

/// The interface of an element, made when it is asked for first; null when there is no such element.
QAccessibleInterface* elementInterface(AccessibleContent& content, const ElementIdentity& identity);

/// Takes the interfaces of elements that are gone, or of all, away from the toolkit.
void releaseGoneElements(AccessibleContent& content);
void releaseAllElements(AccessibleContent& content);

}  // namespace vantix::qt
