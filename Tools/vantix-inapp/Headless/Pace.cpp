#include "Tools/vantix-inapp/Headless/Pace.h"

#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"

namespace vantix {

namespace {

class VirtualPace final : public Pace {
public:
    std::shared_ptr<Dispatcher> dispatcher() const override { return dispatcher_; }
    void settle() override { dispatcher_->runUntilIdle(); }
    void wait(Duration duration) override { dispatcher_->advance(duration); }

private:
    std::shared_ptr<VirtualDispatcher> dispatcher_ = std::make_shared<VirtualDispatcher>();
};

class LivePace final : public Pace {
public:
    ~LivePace() override { dispatcher_->shutDown(); }

    std::shared_ptr<Dispatcher> dispatcher() const override { return dispatcher_; }
    void settle() override { dispatcher_->drainMainQueue(); }
    void wait(Duration duration) override { dispatcher_->runMainQueue(duration); }

private:
    std::shared_ptr<ThreadedDispatcher> dispatcher_ = std::make_shared<ThreadedDispatcher>();
};

}  // namespace

std::unique_ptr<Pace> Pace::makeVirtual() { return std::make_unique<VirtualPace>(); }

std::unique_ptr<Pace> Pace::makeLive() { return std::make_unique<LivePace>(); }

}  // namespace vantix
