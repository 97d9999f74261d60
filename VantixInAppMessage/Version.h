#pragma once

/// The version of all libraries of the package, which are released together.
#define VANTIX_VERSION_MAJOR 1
#define VANTIX_VERSION_MINOR 0
#define VANTIX_VERSION_PATCH 0

/// As one number to compare with: 10203 for 1.2.3.
#define VANTIX_VERSION (VANTIX_VERSION_MAJOR * 10000 + VANTIX_VERSION_MINOR * 100 + VANTIX_VERSION_PATCH)
