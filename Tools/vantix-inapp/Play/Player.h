#pragma once

#include "Tools/vantix-inapp/Scenario/Step.h"

#include <filesystem>

namespace vantix {

class EventLines;
class LineWriter;
class Pace;
class RunningBackends;
class Simulation;

/// Carries out the steps of a scenario, one at a time, and prints what they ask for. Main thread only.
class Player {
public:
    /// All must outlive the player.
    Player(Simulation& simulation, Pace& pace, RunningBackends& backends, EventLines& events, LineWriter& lines,
           std::filesystem::path outputDirectory);

    /// Returns when the step has settled; the first one starts the module. Throws BadInput when a picture cannot be
    /// written, or no port can be had.
    void play(const Step& step);

private:
    void run(const step::Push& push);
    void run(const step::Deliver& deliver);
    void run(const step::Payload& payload);
    void run(const step::Event& event);
    void run(const step::LifeCycle& lifeCycle);
    void run(const step::SetScene& scene);
    void run(const step::SetPushAllowed& pushAllowed);
    void run(const step::SetCustomer& customer);
    void run(const step::Wait& wait);
    void run(const step::Tap& tap);
    void run(const step::Scroll& scroll);
    void run(const step::Dismiss&);
    void run(const step::ButtonAction&);
    void run(const step::LogOut&);
    void run(const step::Sync&);
    void run(const step::Restart& restart);
    void run(const step::StartBackend& start);
    void run(const step::SetDiskFault& disk);
    void run(const step::PrintElements&);
    void run(const step::PrintStore&);
    void run(const step::PrintQueues&);
    void run(const step::Screenshot& screenshot);

    Simulation& simulation_;
    Pace& pace_;
    RunningBackends& backends_;
    EventLines& events_;
    LineWriter& lines_;
    std::filesystem::path outputDirectory_;
};

}  // namespace vantix
