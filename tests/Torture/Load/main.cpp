// A family of faults that are inflicted within the process that they befall, for torture.py: vantix-loaded FAMILY
// SECONDS SEED FOLDER. Prints what a Trial prints, and in the end "tried: NUMBER".

#include "tests/Torture/Load/Trial.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>

using namespace vantix;

std::size_t Trial::share(std::size_t full) const {
    constexpr double timeOfAll = 20;
    return static_cast<std::size_t>(static_cast<double>(full) * std::clamp(time_ / timeOfAll, 0.05, 1.0));
}

bool Trial::expect(bool holds, const std::string& otherwise) {
    if (!holds) std::cout << "lost: " << otherwise << std::endl;
    return holds;
}

void Trial::note(const std::string& text) { std::cout << "note: " << text << std::endl; }

void Trial::expectShortTurns(const std::string& what, Duration longest) {
    auto text = std::to_string(std::chrono::duration<double, std::milli>(longest).count()) + " ms";
    note("longest turn while " + what + ": " + text);
    // A sanitizer takes ten times as long.
    expect(longest <= seconds(Memory::resident() > 0 ? 0.016 : 0.16),
           "a turn of the main thread took " + text + " while " + what);
}

std::size_t Holdings::entriesOf(const char* folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

void Holdings::expectNoMoreNow(Trial& trial, const std::string& what) const {
    constexpr std::size_t toleratedGrowth = 64U << 10, toleratedResidentGrowth = 8U << 20;
    Holdings now;
    trial.note(what + ": memory " + std::to_string(memory >> 10) + " -> " + std::to_string(now.memory >> 10) +
               " KiB, resident " + std::to_string(resident >> 10) + " -> " + std::to_string(now.resident >> 10) +
               " KiB");
    trial.expect(now.memory <= memory + toleratedGrowth, what + ": memory did not return");
    trial.expect(now.resident <= resident + toleratedResidentGrowth, what + ": resident memory did not return");
    trial.expect(now.threads <= threads, what + ": threads are left: " + std::to_string(now.threads - threads));
    trial.expect(now.descriptors <= descriptors,
                 what + ": descriptors are left: " + std::to_string(now.descriptors - descriptors));
}

int main(int, char** arguments) {
    const std::map<std::string, void (*)(Trial&)> families{
        {"load", loadModule}, {"rounds", showAndDismiss},        {"restarts", restart},
        {"week", liveAWeek},  {"teardown", tearDownAtAnyMoment}, {"allocations", failAllocations}};
    Trial trial(arguments[4], std::atof(arguments[2]), static_cast<unsigned>(std::atoi(arguments[3])));
    families.at(arguments[1])(trial);
    std::cout << "tried: " << trial.tried << std::endl;
}
