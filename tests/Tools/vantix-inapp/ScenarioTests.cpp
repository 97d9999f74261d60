#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

using namespace vantix;

namespace {

bool isUUID(std::string_view text) {
    constexpr std::string_view shape = "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX";
    return std::equal(text.begin(), text.end(), shape.begin(), shape.end(), [](char character, char place) {
        return place == '-' ? character == '-' : std::isxdigit(static_cast<unsigned char>(character)) != 0;
    });
}

/// Replaces what differs from run to run by its name.
std::string withoutChance(std::string line) {
    constexpr std::size_t length = 36;
    for (std::size_t at = 0; at + length <= line.size(); ++at) {
        if (isUUID(std::string_view(line).substr(at, length))) line.replace(at, length, "UUID");
    }
    return line;
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
