#pragma once

#include "Tools/vantix-inapp/Headless/Devices.h"

#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// How findings are printed.
enum class FindingFormat { text, json };

struct CheckArguments {
    /// Files, folders (every .json file below), "-" for standard input.
    std::vector<std::string> campaigns;
    FindingFormat format = FindingFormat::text;
    /// Who holds the phone; absent: anyone.
    std::optional<std::string> customer;
    /// The application's identity in the store; absent: not known.
    std::optional<std::string> storeId;
    /// Whether images are fetched and looked at.
    bool online = false;
    Device device;
};

/// How many findings there are of each severity.
struct FindingCounts {
    int errors = 0;
    int warnings = 0;
};

/// Prints what a device would do with the campaigns that their authors may not mean. Throws BadInput.
FindingCounts check(const CheckArguments& arguments);

/// Prints every rule with its severity and when it is found.
void printRules();

/// Prints the JSON Schema of a campaign's file.
void printSchema();

}  // namespace vantix
