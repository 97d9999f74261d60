#include "Tools/vantix-inapp/Headless/Pace.h"

#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"

namespace vantix {

namespace {

/// The process-wide objects of the module live longer than any owner in this program. So that the threads end where
/// this program says, nobody else owns the dispatcher.
std::shared_ptr<Dispatcher> unowned(Dispatcher& dispatcher) {
    return {&dispatcher, [](Dispatcher*) {}};
}

class VirtualPace final : public Pace {
public:
    std::shared_ptr<Dispatcher> dispatcher() const override { return handle_; }
    void settle() override { dispatcher_.runUntilIdle(); }
    void wait(Duration duration) override { dispatcher_.advance(duration); }

private:
    VirtualDispatcher dispatcher_;
    std::shared_ptr<Dispatcher> handle_ = unowned(dispatcher_);
};

class LivePace final : public Pace {
public:
    std::shared_ptr<Dispatcher> dispatcher() const override { return handle_; }
    void settle() override { dispatcher_.drainMainQueue(); }
    void wait(Duration duration) override { dispatcher_.runMainQueue(duration); }

private:
    ThreadedDispatcher dispatcher_;
    std::shared_ptr<Dispatcher> handle_ = unowned(dispatcher_);
};

}  // namespace

std::unique_ptr<Pace> Pace::makeVirtual() { return std::make_unique<VirtualPace>(); }

std::unique_ptr<Pace> Pace::makeLive() { return std::make_unique<LivePace>(); }

}  // namespace vantix
