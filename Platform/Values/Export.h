#pragma once

/// Marks what leaves its library: all that applications and the other libraries of the package call, or whose type they
/// look at. Everything else is hidden where the libraries are shared ones.
#define VANTIX_EXPORT __attribute__((visibility("default")))
