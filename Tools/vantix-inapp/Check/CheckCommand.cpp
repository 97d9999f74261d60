#include "Tools/vantix-inapp/Check/CheckCommand.h"

#include "CampaignCheck/CampaignCheck.h"
#include "CampaignCheck/Rules/RuleTable.h"
#include "CampaignCheck/Schema/CampaignSchema.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/IndentedJSON.h"
#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Check/CampaignFolder.h"
#include "Tools/vantix-inapp/Check/FindingLine.h"
#include "Tools/vantix-inapp/Headless/ImageFetch.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/SilentHost.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"

#include <cstdio>

namespace vantix {

namespace {

std::vector<CampaignFile> readCampaigns(const std::vector<std::string>& names) {
    std::vector<CampaignFile> files;
    for (const std::string& file : campaignFilesIn(names)) files.push_back({file, readInputFile(file)});
    return files;
}

FetchedImage fetched(const URL& url, Pace& pace) {
    auto data = fetchImage(url, pace);
    if (!data) return {.problem = data.error().localizedDescription};
    auto size = Platform::current()->imageDecoder->probe(*data.value());
    if (!size) return {.problem = size.error().localizedDescription};
    return {.bytes = data.value()->size(), .size = size.value()};
}

CheckOptions optionsFor(const CheckArguments& arguments, Pace& pace) {
    CheckOptions options;
    options.customer = arguments.customer;
    options.storeId = arguments.storeId;
    options.device = arguments.device.traits;
    if (arguments.online) options.fetchImage = [&pace](const URL& url) { return fetched(url, pace); };
    return options;
}

void print(const Finding& finding, FindingFormat format) {
    printLine(format == FindingFormat::text ? textOf(finding) : toJSON(objectOf(finding)));
}

std::string counted(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

}  // namespace

FindingCounts check(const CheckArguments& arguments) {
    auto files = readCampaigns(arguments.campaigns);
    StateDirectory state({});
    auto pace = Pace::makeVirtual();
    Simulation simulation({}, state.path(), pace->dispatcher(), silentHost());

    CheckOptions options = optionsFor(arguments, *pace);
    CampaignChecker checker;
    FindingCounts counts;
    for (const CampaignFile& file : files) {
        for (const Finding& finding : checker.check(file, options)) {
            ++(finding.severity == Severity::error ? counts.errors : counts.warnings);
            print(finding, arguments.format);
        }
    }
    if (arguments.format == FindingFormat::text) {
        printLine(counted(static_cast<int>(files.size()), "campaign") + ": " + counted(counts.errors, "error") + ", " +
                  counted(counts.warnings, "warning"));
    }
    return counts;
}

void printRules() {
    constexpr int codeWidth = 20;
    constexpr int severityWidth = 8;
    for (const Rule& rule : campaignRules()) {
        std::printf("%-*.*s %-*s %.*s\n", codeWidth, static_cast<int>(rule.code.size()), rule.code.data(),
                    severityWidth, severityWord(rule.severity).c_str(), static_cast<int>(rule.foundWhen.size()),
                    rule.foundWhen.data());
    }
}

void printSchema() { std::printf("%s\n", toIndentedJSON(campaignSchema()).c_str()); }

}  // namespace vantix
