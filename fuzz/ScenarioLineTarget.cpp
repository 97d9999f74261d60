#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Scenario/ScenarioFile.h"
#include "fuzz/FuzzTarget.h"

using namespace vantix;

/// The lines of a scenario: each is understood, or refused in one line that says where it stands.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::installPlatform();
    try {
        auto scenario = readScenario("input.jsonl", fuzz::textOf(data, size));
        for (const auto& line : scenario.lines) {
            fuzz::expect(line.number > 0 && !line.text.empty(), "a line is one of the file's");
            fuzz::expect(scenario.step(line, "http://127.0.0.1:1").index() == line.step.index(),
                         "an address changes no kind of step");
        }
    } catch (const BadInput& problem) {
        std::string_view words = problem.what();
        fuzz::expect(words.starts_with("input.jsonl:"), "a refusal says where");
        fuzz::expect(words.find('\n') == std::string_view::npos, "a refusal is one line");
    }
    return 0;
}
