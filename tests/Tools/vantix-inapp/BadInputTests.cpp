#include "tests/Support/RunningProgram.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

using namespace vantix;

namespace {

struct Case {
    std::string input;
    std::string problem;
};

/// Reads a table: each case is some lines and, behind an arrow, the last line on standard error.
std::vector<Case> readCases(const char* file) {
    std::vector<Case> cases;
    std::string input;
    for (const std::string& line : linesOf(readFile(std::string(VANTIX_REFUSED "/") + file))) {
        if (line.starts_with("=> ")) {
            cases.push_back({std::exchange(input, {}), line.substr(3)});
        } else if (!input.empty() || !line.empty()) {
            input += line + "\n";
        }
    }
    EXPECT_FALSE(cases.empty());
    return cases;
}

void expectRefused(const ProgramRun& run, const Case& each) {
    EXPECT_EQ(run.errors.empty() ? "" : run.errors.back(), each.problem);
    EXPECT_EQ(run.output, Lines{});
    EXPECT_EQ(run.status, 2);
}

}  // namespace

TEST(BadInput, AScenarioIsRefusedBeforeAnythingIsPlayed) {
    TemporaryFolder folder;
    checkRows(readCases("scenarios.txt"), [&](const Case& each) {
        expectRefused(runProgram({"play", "-"}, folder.path(), each.input), each);
    });
}

TEST(BadInput, ACallIsRefused) {
    TemporaryFolder folder;
    std::filesystem::copy(VANTIX_REFUSED, folder.path());
    checkRows(readCases("calls.txt"), [&](const Case& each) {
        std::istringstream words(each.input);
        Lines arguments{std::istream_iterator<std::string>(words), {}};
        expectRefused(runProgram(arguments, folder.path()), each);
    });
}

TEST(BadInput, TheUsageIsToldToWhoeverAsks) {
    TemporaryFolder folder;
    auto run = runProgram({"play", "--help"}, folder.path());
    EXPECT_NE(std::find(run.output.begin(), run.output.end(), "Usage: vantix-inapp play [OPTIONS] FILE"),
              run.output.end());
    EXPECT_EQ(run.errors, Lines{});
    EXPECT_EQ(run.status, 0);
}
