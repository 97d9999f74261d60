#pragma once

/// Runs the module on ports of this program's own until a popup is shown, and takes it away; answers the number of
/// elements on it, 0 when none was shown within some seconds.
extern "C" __attribute__((visibility("default"))) int showFirstPopup(const char* dataDirectory);
