#pragma once

#include "Platform/Ports/Dispatcher.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace vantix {

/// A turn of the calling thread, from the making on. What the machine kept it from is not counted: a thread that does
/// not wait by itself has only taken the time in which it ran.
class Turn {
public:
    Duration time() const { return waits() == waits_ ? clock(CLOCK_THREAD_CPUTIME_ID) - ran_ : own() - own_; }

private:
    static Duration clock(clockid_t id) {
        timespec now{};
        ::clock_gettime(id, &now);
        return std::chrono::seconds(now.tv_sec) + Duration(now.tv_nsec);
    }
    /// Without the time in which the thread could have run, but no core was free.
    static Duration own() {
        static const int statistics = ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
        std::array<char, 64> text{};
        char* waited = text.data();
        if (::pread(statistics, text.data(), text.size() - 1, 0) > 0) std::strtoll(text.data(), &waited, 10);
        return clock(CLOCK_MONOTONIC) - Duration(std::strtoll(waited, nullptr, 10));
    }
    static long waits() {
        rusage usage{};
        ::getrusage(RUSAGE_THREAD, &usage);
        return usage.ru_nvcsw;
    }

    long waits_ = waits();
    Duration own_ = own();
    Duration ran_ = clock(CLOCK_THREAD_CPUTIME_ID);
};

/// Queues of a kind that measure how long the turns of the main one take. One thread may be measured.
template <typename Inner>
class TimedDispatcher final : public Dispatcher {
public:
    DispatchQueue& mainQueue() override { return main_; }
    DispatchQueue& utilityQueue() override { return inner.utilityQueue(); }
    std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label, QualityOfService qos) override {
        return inner.makeSerialQueue(std::move(label), qos);
    }
    std::shared_ptr<DispatchGroup> makeGroup() override { return inner.makeGroup(); }
    const Clock& clock() const override { return inner.clock(); }
    void shutDown() {
        if constexpr (requires { inner.shutDown(); }) inner.shutDown();
    }

    Inner inner;
    /// Main thread.
    Duration longestTurn{0};

private:
    class TimedQueue final : public DispatchQueue {
    public:
        TimedQueue(DispatchQueue& queue, Duration& longest) : queue_(queue), longest_(longest) {}

        void async(std::function<void()> work) override { queue_.async(timed(std::move(work))); }
        void asyncAfter(Duration delay, std::function<void()> work) override {
            queue_.asyncAfter(delay, timed(std::move(work)));
        }
        bool isCurrent() const override { return queue_.isCurrent(); }
        std::string_view label() const override { return queue_.label(); }

    private:
        std::function<void()> timed(std::function<void()> work) {
            return [this, work = std::move(work)] {
                Turn turn;
                work();
                longest_ = std::max(longest_, turn.time());
            };
        }

        DispatchQueue& queue_;
        Duration& longest_;
    };

    TimedQueue main_{inner.mainQueue(), longestTurn};
};

}  // namespace vantix
