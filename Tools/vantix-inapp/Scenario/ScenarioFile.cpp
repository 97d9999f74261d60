#include "Tools/vantix-inapp/Scenario/ScenarioFile.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/Fields.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "Tools/vantix-inapp/Scenario/BackendAddress.h"
#include "Tools/vantix-inapp/Scenario/ConfigureStep.h"
#include "Tools/vantix-inapp/Scenario/StepReader.h"

namespace vantix {

namespace {

constexpr std::string_view blanks = " \t\r";

std::filesystem::path folderOf(const std::string& file) { return std::filesystem::path(file).parent_path(); }

/// Takes the lines of a scenario one by one.
class ScenarioReader {
public:
    explicit ScenarioReader(const std::string& file) { scenario_.file = file; }

    void read(int number, std::string_view line) {
        auto begin = line.find_first_not_of(blanks);
        if (begin == std::string_view::npos || line[begin] == '#') return;
        auto parsed = parseJSON(line);
        if (!parsed) throw BadInput("not valid JSON: " + parsed.error().localizedDescription);
        if (!parsed.value().dictionary()) throw BadInput("a step must be a JSON object");
        expectEachKeyOnce(line);
        for (const char* key : {"configure", "backend"}) expectEachKeyOnce(objectAsWritten(line, key).value_or("{}"));
        const Dictionary& object = *parsed.value().dictionary();
        if (object.find("configure")) {
            readConfigure(object);
        } else {
            scenario_.lines.push_back({number, std::string(line), readStep(line, object, folderOf(scenario_.file))});
            expectBoundedTime();
        }
        isFirst_ = false;
    }

    Scenario takeScenario() { return std::move(scenario_); }

private:
    static void expectEachKeyOnce(std::string_view object) {
        if (auto key = repeatedKey(object)) throw BadInput(inQuotes(*key) + " is written twice");
    }

    void readConfigure(const Dictionary& object) {
        if (!isFirst_) throw BadInput("\"configure\" must be the first step");
        expectOnlyKeys("configure", object, {"configure"});
        scenario_.configuration = readConfiguration(objectField("configure", *object.find("configure")));
    }

    void expectBoundedTime() {
        if (auto* wait = std::get_if<step::Wait>(&scenario_.lines.back().step)) waited_ += wait->duration;
        if (waited_ > longestWait) {
            throw BadInput("all waits together must not exceed " + inShort(longestWait.count()) + " seconds");
        }
    }

    Scenario scenario_;
    bool isFirst_ = true;
    Duration waited_{0};
};

}  // namespace

Step Scenario::step(const Line& line, const std::string& backendAddress) const {
    // A back end's own triggers mean its own address.
    if (std::holds_alternative<step::StartBackend>(line.step)) return line.step;
    std::string text = withBackendAddress(line.text, backendAddress);
    return readStep(text, *parseJSON(text).value().dictionary(), folderOf(file));
}

Scenario readScenario(const std::string& file, std::string_view text) {
    ScenarioReader reader(file);
    for (int number = 1; !text.empty(); ++number) {
        auto length = std::min(text.find('\n'), text.size());
        try {
            reader.read(number, text.substr(0, length));
        } catch (const BadInput& problem) {
            throw BadInput::at(file, number, problem.what());
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return reader.takeScenario();
}

Scenario readScenarioFile(const std::string& file) { return readScenario(file, readInputFile(file)); }

}  // namespace vantix
