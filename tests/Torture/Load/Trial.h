#pragma once

#include "Platform/Ports/Clock.h"
#include "tests/Torture/Load/Memory.h"

#include <chrono>
#include <filesystem>
#include <random>
#include <string>

namespace vantix {

/// One family of faults at work. Says on standard output what it has found, a line each: "lost: TEXT", "note: TEXT".
class Trial {
public:
    Trial(std::filesystem::path place, double time, unsigned seed)
        : folder(std::move(place)), random(seed), time_(time), end_(std::chrono::steady_clock::now() + seconds(time)) {}

    bool hasTime() const { return std::chrono::steady_clock::now() < end_; }
    /// Of so many as a full trial has, those for which there is time.
    std::size_t share(std::size_t full) const;
    bool expect(bool holds, const std::string& otherwise);
    /// At most 16 ms.
    void expectShortTurns(const std::string& what, Duration longest);
    void note(const std::string& text);

    /// Empty.
    std::filesystem::path folder;
    std::minstd_rand random;
    std::size_t tried = 0;

private:
    double time_;
    std::chrono::steady_clock::time_point end_;
};

/// What a process holds, to be compared with what it holds later.
struct Holdings {
    std::size_t memory = Memory::inUse();
    std::size_t resident = Memory::resident();
    std::size_t threads = entriesOf("/proc/self/task");
    std::size_t descriptors = entriesOf("/proc/self/fd");

    /// Small growth of memory is no leak: hash tables and lists keep their room.
    void expectNoMoreNow(Trial& trial, const std::string& what) const;

    static std::size_t entriesOf(const char* folder);
};

void loadModule(Trial& trial);
void showAndDismiss(Trial& trial);
void restart(Trial& trial);
void liveAWeek(Trial& trial);
void tearDownAtAnyMoment(Trial& trial);
void failAllocations(Trial& trial);

}  // namespace vantix
