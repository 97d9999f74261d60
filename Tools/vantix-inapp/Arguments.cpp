#include "Tools/vantix-inapp/Arguments.h"

#include "Tools/vantix-inapp/BadInput.h"
#include "Tools/vantix-inapp/Fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>

namespace vantix {

const char* const usage =
    "vantix-inapp play FILE|- [--state DIR] [--out DIR] [--live]\n"
    "    plays a scenario and prints what happens, one JSON object a line\n"
    "vantix-inapp render CAMPAIGN -o FILE.png [--device NAME|WxH@S] [--text-scale N]\n"
    "    paints one campaign, on one device or on a sheet of all of them\n"
    "vantix-inapp backend [--port N] [--triggers FILE] [--images DIR] [--tls]\n"
    "                     [--delay SECONDS] [--fail N] [--truncate]\n"
    "    answers the events API on loopback, takes reported events and prints them, one JSON object a line\n";

namespace {

/// Takes the words of one command: options with and without a value, and what stands beside them.
class WordReader {
public:
    using Action = std::function<void(const std::string& value)>;

    void option(const std::string& name, Action action) { options_[name] = std::move(action); }
    void flag(const std::string& name, bool& field) { flags_[name] = &field; }

    /// Returns what is neither an option nor its value.
    std::vector<std::string> read(const std::vector<std::string>& words) {
        std::vector<std::string> others;
        for (auto word = words.begin(); word != words.end(); ++word) {
            if (auto flag = flags_.find(*word); flag != flags_.end()) {
                *flag->second = true;
            } else if (auto option = options_.find(*word); option != options_.end()) {
                if (++word == words.end()) throw BadInput(option->first + " needs a value");
                option->second(*word);
            } else if (word->size() > 1 && word->front() == '-') {
                throw BadInput("unknown option " + inQuotes(*word));
            } else {
                others.push_back(*word);
            }
        }
        return others;
    }

private:
    std::map<std::string, Action> options_;
    std::map<std::string, bool*> flags_;
};

std::string onlyWord(const std::vector<std::string>& words, const std::string& what) {
    if (words.empty()) throw BadInput(what + " is missing");
    if (words.size() > 1) throw BadInput("only one " + what + " is taken, not also " + inQuotes(words[1]));
    return words.front();
}

double number(const std::string& option, const std::string& text, double least, double most) {
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool isNumber = error == std::errc() && end == text.data() + text.size();
    return numberField(option, isNumber ? Value(value) : Value(), least, most);
}

int wholeNumber(const std::string& option, const std::string& text, int most) {
    double value = number(option, text, 0, most);
    if (value != std::floor(value)) throw BadInput(inQuotes(option) + " must be a whole number");
    return static_cast<int>(value);
}

PlayArguments parsePlay(const std::vector<std::string>& words) {
    PlayArguments arguments;
    WordReader reader;
    reader.option("--state", [&](const std::string& value) { arguments.stateDirectory = value; });
    reader.option("--out", [&](const std::string& value) { arguments.outputDirectory = value; });
    reader.flag("--live", arguments.live);
    arguments.scenario = onlyWord(reader.read(words), "scenario file");
    return arguments;
}

RenderArguments parseRender(const std::vector<std::string>& words) {
    RenderArguments arguments;
    WordReader reader;
    reader.option("-o", [&](const std::string& value) { arguments.picture = value; });
    reader.option("--device", [&](const std::string& value) { arguments.device = deviceFromText(value); });
    reader.option("--text-scale",
                  [&](const std::string& value) { arguments.textScale = number("--text-scale", value, 0.1, 10); });
    arguments.campaign = onlyWord(reader.read(words), "campaign file");
    if (arguments.picture.empty()) throw BadInput("-o FILE.png is missing");
    return arguments;
}

BackendOptions parseBackend(const std::vector<std::string>& words) {
    constexpr int highestPort = 65535, mostFailures = 1000000, longestDelay = 3600;
    BackendOptions options;
    WordReader reader;
    reader.option("--port", [&](const auto& value) { options.port = wholeNumber("--port", value, highestPort); });
    reader.option("--triggers", [&](const auto& value) { options.triggers = value; });
    reader.option("--images", [&](const auto& value) { options.images = value; });
    reader.flag("--tls", options.usesTLS);
    reader.option("--delay", [&](const auto& value) { options.delay = number("--delay", value, 0, longestDelay); });
    reader.option("--fail", [&](const auto& value) { options.failures = wholeNumber("--fail", value, mostFailures); });
    reader.flag("--truncate", options.truncates);
    auto others = reader.read(words);
    if (!others.empty()) throw BadInput("unknown word " + inQuotes(others.front()));
    return options;
}

bool isLaterCommand(const std::string& command) { return command == "check" || command == "simulate"; }

}  // namespace

Arguments parseArguments(const std::vector<std::string>& words) {
    if (words.empty()) throw BadInput("no command");
    const std::string& command = words.front();
    std::vector<std::string> rest(words.begin() + 1, words.end());
    if (command == "help" || std::find(words.begin(), words.end(), "--help") != words.end()) return HelpArguments{};
    if (command == "play") return parsePlay(rest);
    if (command == "render") return parseRender(rest);
    if (command == "backend") return parseBackend(rest);
    if (isLaterCommand(command)) throw BadInput("the command " + inQuotes(command) + " does not exist yet");
    throw BadInput("unknown command " + inQuotes(command));
}

}  // namespace vantix
