#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace vantix;

class BadInputTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(BadInputTest, AScenarioIsRefusedBeforeAnythingIsPlayed) {
    struct {
        const char *line, *problem;
    } const cases[] = {
        {"{",
         "not valid JSON: The JSON document has an improper structure: missing or superfluous commas, braces, "
         "missing keys, etc."},
        {"[]", "a step must be a JSON object"},
        {"{}", "no step"},
        {R"({"pusch": {}})", "unknown step \"pusch\""},
        {R"({"wait": 1, "wait": 2})", "\"wait\" is written twice"},
        {R"({"configure": {"scene": true, "scene": false}})", "\"scene\" is written twice"},
        {R"({"push": {}, "wait": 1})", "two steps in one line: \"push\" and \"wait\""},
        {R"({"wait": 1, "comment": ""})", "\"wait\" has no key \"comment\""},
        {R"({"configure": {}})", "\"configure\" must be the first step"},
        {R"({"push": []})", "\"push\" must be an object"},
        {R"({"campaign": "{}"})", "\"campaign\" must be an object"},
        {R"({"deliver": {}})", "\"deliver\" must be a list"},
        {R"({"deliver": [{"type": "inapp"}]})", "\"deliver\" needs a \"type\" and a \"payload\" for each notification"},
        {R"({"event": "bought", "attributes": null})", "\"attributes\" must be an object"},
        {R"({"state": "active"})",
         "\"state\" must be one of \"didBecomeActive\", \"willResignActive\", \"didEnterBackground\", "
         "\"willTerminate\""},
        {R"({"scene": 1})", "\"scene\" must be true or false"},
        {R"({"customer": 5})", "\"customer\" must be a text"},
        {R"({"wait": -0.1})", "\"wait\" must be a number between 0 and 1e+09"},
        {R"({"wait": 1e300})", "\"wait\" must be a number between 0 and 1e+09"},
        {R"({"wait": 99999999999999999999999})", "\"wait\" must be a number between 0 and 1e+09"},
        {R"({"wait": 1e9})", "all waits together must not exceed 1e+09 seconds"},
        {R"({"wait": "1"})", "\"wait\" must be a number between 0 and 1e+09"},
        {R"({"tap": {}})", "\"tap\" needs a \"role\", a \"label\", an \"index\", or \"x\" and \"y\""},
        {R"({"tap": {"x": 1}})", "\"tap\" needs both \"x\" and \"y\""},
        {R"({"tap": {"x": 1, "y": 1, "role": "card"}})", "\"tap\" has no key \"role\""},
        {R"({"tap": {"role": "title"}})",
         "\"role\" must be one of \"close\", \"button\", \"star\", \"option\", \"image\", \"card\", \"row\""},
        {R"({"tap": {"index": -1}})", "\"index\" must be a whole number from 0 up"},
        {R"({"scroll": null})", "\"scroll\" must be a number between -1e+06 and 1e+06"},
        {R"({"logout": false})", "\"logout\" must be true"},
        {R"({"restart": {"state": "active"}})", "\"restart\" has no key \"state\""},
        {R"({"backend": {"port": 80}})", "\"backend\" has no key \"port\""},
        {R"({"backend": {"tls": true, "tls": false}})", "\"tls\" is written twice"},
        {R"({"backend": {"triggers": [5]}})", "a campaign must be a JSON object"},
        {R"({"backend": {"triggers": 5}})", "\"triggers\" must be an object"},
        {R"({"backend": {"images": "missing"}})", "\"images\" must be a folder"},
        {R"({"backend": {"fail": -1}})", "\"fail\" must be a whole number from 0 up"},
        {R"({"sync": {}})", "\"sync\" needs a \"cuID\""},
        {R"({"screenshot": "../a.png"})", "\"screenshot\" must name a file inside the output folder"},
        {R"({"screenshot": "/tmp/a.png"})", "\"screenshot\" must name a file inside the output folder"},
        {R"({"screenshot": "folder/"})", "\"screenshot\" must name a file inside the output folder"},
    };
    for (const auto& [line, problem] : cases) {
        auto run =
            runProgram({"play", "-"}, folder.path(), "# A comment\n{\"wait\": 1}\n\n" + std::string(line) + "\n");
        EXPECT_EQ(run.lastError(), "-:4: " + std::string(problem));
        EXPECT_EQ(run.output, std::vector<std::string>{}) << line;
        EXPECT_EQ(run.status, 2) << line;
    }
}

TEST_F(BadInputTest, AConfigurationIsRefused) {
    struct {
        const char *configuration, *problem;
    } const cases[] = {
        {R"({"enviroment": "dev"})", "\"configure\" has no key \"enviroment\""},
        {R"({"environment": "prod"})", "\"environment\" must be one of \"dev\", \"unittest\""},
        {R"({"device": "watch"})", "unknown device \"watch\""},
        {R"({"device": 3})", "\"device\" must be a device's name or an object"},
        {R"({"device": {"width": 100}})", "a screen's size and scale must be above 0"},
        {R"({"device": {"width": 100, "height": 50, "safeArea": [1, 2, 3]}})",
         "\"safeArea\" must be [top, left, bottom, right]"},
        {R"({"device": {"width": 100, "height": 50, "safeArea": [30, 0, 20, 0]}})",
         "the safe areas leave nothing of the screen"},
        {R"({"device": {"width": 9000, "height": 9000, "scale": 3}})", "the screen has more than 100 megapixels"},
        {R"({"textScale": 0})", "\"textScale\" must be a number between 0.1 and 10"},
        {R"({"logLevel": "warning"})", "\"logLevel\" must be one of \"debug\", \"info\", \"error\", \"none\""},
    };
    for (const auto& [configuration, problem] : cases) {
        auto run = runProgram({"play", "-"}, folder.path(), "{\"configure\": " + std::string(configuration) + "}");
        EXPECT_EQ(run.lastError(), "-:1: " + std::string(problem));
        EXPECT_EQ(run.status, 2) << configuration;
    }
}

TEST_F(BadInputTest, ACallIsRefused) {
    std::ofstream(folder.path() / "list.json") << "[]";
    std::ofstream(folder.path() / "badge.json") << R"({"body": {"type": "BADGE"}})";
    std::ofstream(folder.path() / "header.json") << R"({"body": {"type": "HEADER", "title": "Hello"}})";
    struct {
        std::vector<std::string> arguments;
        const char* problem;
    } const cases[] = {
        {{}, "A command is required"},
        {{"paint"}, "The following argument was not expected: paint"},
        {{"play"}, "FILE is required"},
        {{"play", "a", "b"}, "The following argument was not expected: b"},
        {{"play", "--state"}, "--state: 1 required DIR missing"},
        {{"play", "-", "--fast"}, "The following argument was not expected: --fast"},
        {{"play", "missing.jsonl"}, "missing.jsonl:1: cannot be read: No such file or directory"},
        {{"play", "."}, ".:1: cannot be read: Is a directory"},
        {{"backend", "--triggers", "missing.json"}, "missing.json:1: cannot be read: No such file or directory"},
        {{"play", "-", "--state", "list.json"}, "the state directory list.json cannot be made: Not a directory"},
        {{"render", "badge.json"}, "-o is required"},
        {{"render", "list.json", "-o", "a.png"}, "list.json:1: a campaign must be a JSON object"},
        {{"render", "badge.json", "-o", "a.png"}, "badge.json:1: a message of type BADGE is never shown"},
        {{"render", "header.json", "-o", "a.png"},
         "header.json:1: a message of type HEADER without message text is never shown"},
        {{"render", "badge.json", "-o", "a.png", "--device", "100x200"},
         "\"100x200\" is neither a device nor WIDTHxHEIGHT@SCALE"},
        {{"render", "badge.json", "-o", "a.png", "--device", "100x200@2x"},
         "\"100x200@2x\" is neither a device nor WIDTHxHEIGHT@SCALE"},
        {{"render", "badge.json", "-o", "a.png", "--text-scale", "2x"},
         "--text-scale: 2x is no number between 0.1 and 10"},
        {{"backend", "--delay", "nan"}, "--delay: nan is no number between 0 and 3600"},
        {{"backend", "--images", "missing"}, "--images: Directory does not exist: missing"},
    };
    for (const auto& [arguments, problem] : cases) {
        auto run = runProgram(arguments, folder.path());
        EXPECT_EQ(run.lastError(), problem);
        EXPECT_EQ(run.output, std::vector<std::string>{});
        EXPECT_EQ(run.status, 2) << problem;
    }
}
