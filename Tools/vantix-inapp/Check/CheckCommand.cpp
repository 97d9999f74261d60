#include "Tools/vantix-inapp/Check/CheckCommand.h"

#include "CampaignCheck/CampaignCheck.h"
#include "CampaignCheck/Schema/CampaignSchema.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/IndentedJSON.h"
#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Check/CampaignFolder.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/Vantix.h"

#include <algorithm>
#include <cstdio>

namespace vantix {

namespace {

VantixHost silentHost() {
    VantixHost host;
    host.logSink = [](const LogLine&) {};
    return host;
}

std::vector<CampaignFile> readCampaigns(const std::vector<std::string>& names) {
    std::vector<CampaignFile> files;
    for (const std::string& file : campaignFilesIn(names)) files.push_back({file, readInputFile(file)});
    return files;
}

FetchedImage fetched(const URL& url, Pace& pace) {
    FetchedImage image;
    auto keep = [&](const Result<ImageData, ImageError>& data) {
        if (!data) {
            image.problem = data.error().localizedDescription;
            return;
        }
        image.bytes = data.value()->size();
        if (auto size = Platform::current()->imageDecoder->probe(*data.value())) image.size = size.value();
    };
    auto transfer = ImageUtility::downloadImage(url, {}, keep);
    pace.settle();
    return image;
}

CheckOptions optionsFor(const CheckArguments& arguments, Pace& pace) {
    CheckOptions options;
    options.customer = arguments.customer;
    options.storeId = arguments.storeId;
    options.device = arguments.device.traits;
    if (arguments.online) options.fetchImage = [&pace](const URL& url) { return fetched(url, pace); };
    return options;
}

const char* word(Severity severity) { return severity == Severity::error ? "error" : "warning"; }

void printText(const Finding& finding) {
    std::printf("%s:%d:%d: %s: %s. Instead: %s. [%s]\n", finding.file.c_str(), finding.line, finding.column,
                word(finding.severity), finding.message.c_str(), finding.instead.c_str(), finding.rule.c_str());
}

void printJSON(const Finding& finding) {
    Dictionary line{{"file", finding.file},       {"line", finding.line},      {"column", finding.column},
                    {"place", finding.place},     {"rule", finding.rule},      {"severity", word(finding.severity)},
                    {"message", finding.message}, {"instead", finding.instead}};
    std::printf("%s\n", toJSON(line).c_str());
}

std::string counted(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

FindingCounts countsOf(const std::vector<Finding>& findings) {
    FindingCounts counts;
    for (const Finding& finding : findings) ++(finding.severity == Severity::error ? counts.errors : counts.warnings);
    return counts;
}

}  // namespace

FindingCounts check(const CheckArguments& arguments) {
    auto files = readCampaigns(arguments.campaigns);
    StateDirectory state({});
    auto pace = Pace::makeVirtual();
    Simulation simulation({}, state.path(), pace->dispatcher(), silentHost());

    auto findings = checkCampaigns(files, optionsFor(arguments, *pace));
    std::for_each(findings.begin(), findings.end(), arguments.format == FindingFormat::text ? printText : printJSON);
    FindingCounts counts = countsOf(findings);
    if (arguments.format == FindingFormat::text) {
        std::printf("%s: %s, %s\n", counted(static_cast<int>(files.size()), "campaign").c_str(),
                    counted(counts.errors, "error").c_str(), counted(counts.warnings, "warning").c_str());
    }
    return counts;
}

void printRules() {
    for (const Rule& rule : campaignRules()) {
        std::printf("%-20s %-8s %s\n", std::string(rule.code).c_str(), word(rule.severity),
                    std::string(rule.foundWhen).c_str());
    }
}

void printSchema() { std::printf("%s\n", toIndentedJSON(campaignSchema()).c_str()); }

}  // namespace vantix
