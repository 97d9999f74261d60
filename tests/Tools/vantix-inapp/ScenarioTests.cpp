#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

using namespace vantix;

namespace {

/// Replaces what differs from run to run by its name.
std::string withoutChance(const std::string& line) {
    static const std::regex uuid("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}");
    return std::regex_replace(line, uuid, "UUID");
}

std::vector<std::string> scenarioNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(VANTIX_SCENARIOS)) {
        if (entry.path().extension() == ".jsonl") names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ScenarioTest : public testing::TestWithParam<std::string> {
protected:
    TemporaryFolder folder;
};

}  // namespace

TEST_P(ScenarioTest, PrintsWhatIsExpected) {
    std::string scenario = VANTIX_SCENARIOS "/" + GetParam();
    auto run = runProgram({"play", scenario + ".jsonl"}, folder.path());
    std::transform(run.output.begin(), run.output.end(), run.output.begin(), withoutChance);

    EXPECT_EQ(run.output, lines(readFile(scenario + ".expected")));
    EXPECT_EQ(run.errors, std::vector<std::string>{});
    EXPECT_EQ(run.status, 0);
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ScenarioTest, testing::ValuesIn(scenarioNames()), [](const auto& scenario) {
    std::string name = scenario.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});
