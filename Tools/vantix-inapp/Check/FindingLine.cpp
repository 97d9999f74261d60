#include "Tools/vantix-inapp/Check/FindingLine.h"

namespace vantix {

std::string severityWord(Severity severity) { return severity == Severity::error ? "error" : "warning"; }

std::string textOf(const Finding& finding) {
    return finding.file + ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column) + ": " +
           severityWord(finding.severity) + ": " + finding.message + ". Instead: " + finding.instead + ". [" +
           finding.rule + "]";
}

Dictionary objectOf(const Finding& finding) {
    return {{"file", finding.file},       {"line", finding.line},      {"column", finding.column},
            {"place", finding.place},     {"rule", finding.rule},      {"severity", severityWord(finding.severity)},
            {"message", finding.message}, {"instead", finding.instead}};
}

}  // namespace vantix
