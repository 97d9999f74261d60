#pragma once

#include "Platform/Ports/FontCatalogue.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/FatalError.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/VantixLogger.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace vantix::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// What must hold for every input; one for which it does not is a finding.
inline void expect(bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n", what.c_str());
    std::abort();
}

struct OneFont final : FontCatalogue {
    bool contains(std::string_view name) const override { return name == "Inter"; }
};

/// A machine with one font, whose log makes the text of every line and drops it.
inline Platform platform() {
    VantixLogger::setSink([](const LogLine&) {});
    Platform platform;
    platform.fontCatalogue = std::make_shared<OneFont>();
    return platform;
}

/// Once for a program of which nothing else is needed.
inline void installPlatform() {
    static const bool isInstalled = (Platform::install(platform()), true);
    static_cast<void>(isInstalled);
}

/// The value must come back from its JSON text as it is.
inline void expectComesBack(const Value& value) {
    auto parsed = parseJSON(toJSON(value));
    expect(parsed && parsed.value() == value, "a value comes back from its JSON text");
}

/// Work that may meet a condition documented to stop the process, as trees and payloads built in code can; it ends the
/// work. Anywhere else such a condition is a finding.
template <typename Work>
void untilFatalCondition(Work work) {
    struct Met {};
    setFatalErrorHandler([](std::string_view) { throw Met(); });
    try {
        work();
    } catch (const Met&) {
    }
    setFatalErrorHandler({});
}

}  // namespace vantix::fuzz
