#include "tests/Support/RunningProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

using namespace vantix;

namespace {

/// Replaces what differs from run to run by its name.
std::string withoutChance(const std::string& line) {
    static const std::regex identity("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}", std::regex::icase);
    static const std::regex duration("after [0-9]+ ms");
    return std::regex_replace(std::regex_replace(line, identity, "UUID"), duration, "after some ms");
}

Lines scenarioNames() {
    Lines names;
    for (const auto& entry : std::filesystem::directory_iterator(VANTIX_SCENARIOS)) {
        if (entry.path().extension() == ".jsonl") names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ScenarioTest : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(ScenarioTest, PrintsWhatIsExpected) {
    TemporaryFolder folder;
    std::string scenario = VANTIX_SCENARIOS "/" + GetParam();
    auto run = runProgram({"play", scenario + ".jsonl"}, folder.path());
    std::transform(run.output.begin(), run.output.end(), run.output.begin(), withoutChance);

    EXPECT_EQ(run.output, linesOf(readFile(scenario + ".expected")));
    EXPECT_EQ(run.errors, Lines{});
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, testing::ValuesIn(scenarioNames()), [](const auto& scenario) {
    std::string name = scenario.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});
