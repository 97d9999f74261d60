#include "Tools/vantix-inapp/Play/PlayCommand.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Values/FatalError.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"
#include "Tools/vantix-inapp/Play/CampaignRemarks.h"
#include "Tools/vantix-inapp/Play/EventLines.h"
#include "Tools/vantix-inapp/Play/LineWriter.h"
#include "Tools/vantix-inapp/Play/Player.h"
#include "Tools/vantix-inapp/Play/RunningBackends.h"
#include "Tools/vantix-inapp/Scenario/ScenarioFile.h"
#include "VantixCore/Vantix.h"

#include <algorithm>
#include <unistd.h>

namespace vantix {

namespace {

/// While it lives, a fatal condition is printed as the last line.
class FatalLine {
public:
    FatalLine(LineWriter& lines, StateDirectory& state) {
        setFatalErrorHandler([&lines, &state](std::string_view message) {
            lines.write("fatal", std::string(message));
            state.removeTemporary();
        });
    }
    ~FatalLine() { setFatalErrorHandler({}); }
};

/// Before anything is played, so that no picture is lost in the end.
void prepareOutput(const Scenario& scenario, const std::filesystem::path& folder) {
    bool takesPictures = std::any_of(scenario.lines.begin(), scenario.lines.end(), [](const auto& line) {
        return std::holds_alternative<step::Screenshot>(line.step);
    });
    if (!takesPictures) return;
    std::error_code problem;
    std::filesystem::create_directories(folder, problem);
    if (problem || ::access(folder.c_str(), W_OK) != 0) throw BadInput(folder.string() + " cannot be written to");
}

/// So that the same file gives the same lines.
void leaveNothingToChance(VantixHost& host) {
    host.maximumConcurrentTransfers = 1;
    host.retrySpread = [] { return 1.0; };
}

void playLine(Player& player, const Scenario& scenario, const Scenario::Line& line, const Backend* backend) {
    try {
        player.play(backend ? scenario.step(line, backend->url()) : line.step);
    } catch (const BadInput& problem) {
        throw BadInput::at(scenario.file, line.number, problem.what());
    }
}

}  // namespace

void play(const PlayArguments& arguments) {
    Scenario scenario = readScenarioFile(arguments.scenario);
    prepareOutput(scenario, arguments.outputDirectory);

    // In this order, so that the threads end before what they print to and write to.
    StateDirectory state(arguments.stateDirectory);
    LineWriter lines;
    FatalLine fatalLine(lines, state);
    EventLines events(lines, scenario.configuration);
    RunningBackends backends;
    auto pace = arguments.live ? Pace::makeLive() : Pace::makeVirtual();
    lines.setClock(pace->dispatcher()->clock());

    VantixHost host = events.host();
    if (!arguments.live) leaveNothingToChance(host);
    Simulation simulation(scenario.configuration, state.path(), pace->dispatcher(), std::move(host));
    events.observe(simulation.scene());
    Player player(simulation, *pace, backends, events, lines, arguments.outputDirectory);
    CampaignRemarks remarks(scenario, events, lines);
    for (const auto& line : scenario.lines) {
        if (arguments.checks) remarks.remark(line, backends.latest());
        playLine(player, scenario, line, backends.latest());
        requirePrinted();
    }
}

}  // namespace vantix
