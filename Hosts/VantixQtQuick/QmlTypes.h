#pragma once

#include "Platform/Values/Export.h"

namespace vantix::qt {

/// Makes the host known to QML, as the type QuickHost of the module Vantix.InAppMessage. Called once, before QML that
/// uses it is loaded; nothing has to be deployed for it.
///
///     import Vantix.InAppMessage
///     ApplicationWindow {
///         QuickHost {
///             id: messages
///             accountId: "shop"
///             onMessageShown: scope => console.log(scope)
///         }
///         Button { onClicked: messages.captureEvent("purchase", {amount: 3}) }
///     }
///
/// The window that it stands in shows messages. Properties, all of them optional:
///   - `dataDirectory`, `accountId`, `baseUrl`, `accessToken`, `sslKeyHash`, `appStoreId`, `refusedSchemes`,
///     `deepLinkSchemes`: see HostOptions; they count as they stand when the host is complete;
///   - `customerId`, `messagesAllowed` (true), `textScale` (0: the platform's), `reducesMotion` (false),
///     `inForeground` (true): may change at any time. Logging out clears `customerId`.
/// Functions: `receivePush(campaign)`, `captureEvent(name, attributes)`, `logOut()`, `dismiss()`, `addWindow(window)`,
/// `removeWindow(window)`. Signals: those of Host, and `pushRefused(whyNot)` when `receivePush` was false.
/// There is one host in a process.
VANTIX_EXPORT void registerQmlTypes();

}  // namespace vantix::qt
