#include "Platform/Values/Export.h"

/// Fontconfig's patterns refer to their parts by offsets, which a leak checker cannot follow: it takes what the current
/// configuration still holds for lost. The checker looks the function up by its name.
extern "C" VANTIX_EXPORT const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
