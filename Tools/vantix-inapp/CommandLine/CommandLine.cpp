#include "Tools/vantix-inapp/CommandLine/CommandLine.h"

#include "Platform/Values/ControlCharacters.h"
#include "Tools/vantix-inapp/Backend/BackendCommand.h"
#include "Tools/vantix-inapp/Check/CheckCommand.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"
#include "Tools/vantix-inapp/Play/PlayCommand.h"
#include "Tools/vantix-inapp/Render/RenderCommand.h"
#include "Tools/vantix-inapp/Simulate/SimulateCommand.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>

namespace vantix {

namespace {

constexpr int done = 0;
constexpr int findings = 1;
constexpr int badInput = 2;

/// What the words ask for; answers the exit status.
using Command = std::function<int()>;

/// Takes a number within the limits; none is neither.
CLI::Validator numberBetween(double least, double most) {
    return CLI::Validator(
        [=](const std::string& text) {
            double number = 0;
            bool isWithin = CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
            return isWithin ? std::string()
                            : text + " is no number between " + CLI::detail::to_string(least) + " and " +
                                  CLI::detail::to_string(most);
        },
        "", "between");
}

void addPlay(CLI::App& program, Command& chosen) {
    auto* command = program.add_subcommand("play", "Plays a scenario and prints what happens, one JSON object a line");
    auto arguments = std::make_shared<PlayArguments>();
    command->add_option("FILE", arguments->scenario, "The scenario; - is standard input")->required()->type_name("");
    command->add_option("--state", arguments->stateDirectory, "Keeps store and settings; else nothing is kept")
        ->type_name("DIR");
    command->add_option("--out", arguments->outputDirectory, "Takes the screenshots; else the current folder does")
        ->type_name("DIR");
    command->add_flag("--live", arguments->live, "Waits in real time");
    command->add_flag("--check", arguments->checks, "Prints what check finds in a campaign, before it is pushed");
    command->callback([arguments, &chosen] {
        chosen = [arguments] {
            play(*arguments);
            return done;
        };
    });
}

void addRender(CLI::App& program, Command& chosen) {
    auto* command = program.add_subcommand("render", "Paints one campaign, on one device or on a sheet of all of them");
    auto arguments = std::make_shared<RenderArguments>();
    command->add_option("CAMPAIGN", arguments->campaign, "The campaign's file")->required()->type_name("");
    command->add_option("-o", arguments->picture, "The picture's file")->required()->type_name("FILE.png");
    command
        ->add_option_function<std::string>(
            "--device", [arguments](const std::string& text) { arguments->device = deviceFromText(text); },
            "Paints on this device alone")
        ->type_name("NAME|WxH@S");
    command->add_option("--text-scale", arguments->textScale, "The reader's text size; 1 is the designer's")
        ->type_name("N")
        ->check(numberBetween(smallestTextScale, largestTextScale));
    command->add_option("--customer", arguments->customer, "Who holds the phone; else \"customer\"")->type_name("ID");
    auto isStrict = std::make_shared<bool>(false);
    command->add_flag("--strict", *isStrict,
                      "Ends with status 1 when the module would not show the campaign, or not like that");
    command->callback([arguments, isStrict, &chosen] {
        chosen = [arguments, isStrict] { return render(*arguments) || !*isStrict ? done : findings; };
    });
}

void addCheck(CLI::App& program, Command& chosen) {
    auto* command =
        program.add_subcommand("check", "Says what a device would do with campaigns that their authors may not mean");
    auto arguments = std::make_shared<CheckArguments>();
    arguments->device = deviceNamed("phone");
    command->add_option("CAMPAIGN", arguments->campaigns, "Files, folders (every .json below), - for standard input")
        ->type_name("");
    command->add_option("--format", arguments->format, "How findings are printed; else text")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, FindingFormat>{{"text", FindingFormat::text}, {"json", FindingFormat::json}}))
        ->type_name("text|json");
    auto isStrict = std::make_shared<bool>(false);
    command->add_flag("--strict", *isStrict, "Ends with status 1 for a warning, too");
    command->add_option("--customer", arguments->customer, "Who holds the phone; else anyone")->type_name("ID");
    command->add_option("--store-id", arguments->storeId, "The application's identity in the store")->type_name("ID");
    command->add_flag("--online", arguments->online, "Fetches images and looks at them");
    command
        ->add_option_function<std::string>(
            "--device", [arguments](const std::string& text) { arguments->device = deviceFromText(text); },
            "Draws on this device; else on a phone")
        ->type_name("NAME|WxH@S");
    auto print = std::make_shared<void (*)()>(nullptr);
    command->add_flag_callback(
        "--rules", [print] { *print = printRules; }, "Prints every rule instead");
    command->add_flag_callback(
        "--schema", [print] { *print = printSchema; }, "Prints a JSON Schema of a campaign's file instead");
    command->callback([arguments, isStrict, print, &chosen] {
        if (!*print && arguments->campaigns.empty()) throw CLI::RequiredError("CAMPAIGN");
        chosen = [arguments, isStrict, print] {
            if (*print) {
                (*print)();
                return done;
            }
            FindingCounts counts = check(*arguments);
            return counts.errors > 0 || (*isStrict && counts.warnings > 0) ? findings : done;
        };
    });
}

void addSimulate(CLI::App& program, Command& chosen) {
    auto* command = program.add_subcommand(
        "simulate", "A phone in a window: a small shop, messages above it, and what happens beside it");
    auto arguments = std::make_shared<SimulateArguments>();
    command
        ->add_option("CAMPAIGN", arguments->campaigns,
                     "Files of campaigns, to be sent by a click, and again when they change")
        ->type_name("");
    command->callback([arguments, &chosen] {
        chosen = [arguments] {
            simulate(*arguments);
            return done;
        };
    });
}

void addBackend(CLI::App& program, Command& chosen) {
    auto* command = program.add_subcommand(
        "backend", "Answers the events API on loopback, takes reported events and prints them, one JSON object a line");
    auto arguments = std::make_shared<BackendArguments>();
    BackendOptions& options = arguments->options;
    command->add_option("--port", options.port, "Listens there; else at a free one")
        ->type_name("N")
        ->check(CLI::Range(0, 65535));
    command->add_option("--triggers", arguments->triggers, "The answer itself, or a list of campaigns")
        ->type_name("FILE");
    command->add_option("--images", options.images, "Serves them below /images/")
        ->type_name("DIR")
        ->check(CLI::ExistingDirectory);
    command->add_flag("--tls", options.usesTLS, "Serves over TLS, and prints the certificate's pin");
    command->add_option("--delay", options.delay, "Waits before each answer")
        ->type_name("SECONDS")
        ->check(numberBetween(0, BackendOptions::longestDelay));
    command->add_option("--fail", options.failures, "Answers so many calls with status 503 first")
        ->type_name("N")
        ->check(CLI::Range(std::numeric_limits<int>::max()));
    command->add_flag("--truncate", options.truncates, "Breaks every answer off in its middle");
    command->callback([arguments, &chosen] {
        chosen = [arguments] {
            runBackend(*arguments);
            return done;
        };
    });
}

int complain(const std::string& problem) {
    std::fprintf(stderr, "%s\n", withEscapedControlCharacters(problem).c_str());
    return badInput;
}

int parseAndRun(CLI::App& program, const Command& command, int count, const char* const* words) {
    try {
        program.parse(count, words);
    } catch (const CLI::CallForHelp&) {
        std::fputs(program.help().c_str(), stdout);
        return done;
    }
    if (!command) throw CLI::RequiredError("A command");
    return command();
}

}  // namespace

int runCommandLine(int count, const char* const* words) {
    // Whoever reads the lines may leave early; the state directory is to be removed all the same.
    std::signal(SIGPIPE, SIG_IGN);

    CLI::App program("The in-app messaging module on this machine", "vantix-inapp");
    program.require_subcommand(0, 1);
    Command command;
    addPlay(program, command);
    addRender(program, command);
    addCheck(program, command);
    addSimulate(program, command);
    addBackend(program, command);
    try {
        int status = parseAndRun(program, command, count, words);
        requirePrinted();
        return status;
    } catch (const CLI::ParseError& problem) {
        std::fputs(program.help().c_str(), stderr);
        return complain(problem.what());
    } catch (const BadInput& problem) {
        return complain(problem.what());
    }
}

}  // namespace vantix
