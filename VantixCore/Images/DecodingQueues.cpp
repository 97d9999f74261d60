#include "VantixCore/Images/DecodingQueues.h"

#include "Platform/Ports/RunningQueue.h"

#include <new>
#include <utility>

namespace vantix {

namespace {

/// A picture for which there is no memory is one that cannot be made.
Result<Image> made(const DecodingQueues::Work& work) {
    try {
        return work.make();
    } catch (const std::bad_alloc&) {
        // Short enough to need no memory itself.
        return Error{"no memory left"};
    }
}

}  // namespace

DecodingQueues::DecodingQueues(std::shared_ptr<DispatchQueue> asking,
                               std::vector<std::shared_ptr<DispatchQueue>> queues)
    : asking_(std::move(asking)), idle_(std::move(queues)) {}

void DecodingQueues::run(Work work) {
    assertOnQueue(*asking_, "DecodingQueues::run");
    waiting_.push_back(std::move(work));
    startWaiting();
}

void DecodingQueues::startWaiting() {
    while (!idle_.empty() && !waiting_.empty()) {
        Work work = std::move(waiting_.front());
        waiting_.pop_front();
        if (work.isWanted()) start(std::move(work));
    }
}

void DecodingQueues::start(Work work) {
    auto queue = std::move(idle_.back());
    idle_.pop_back();
    DispatchQueue& chosen = *queue;
    chosen.async([self = shared_from_this(), queue = std::move(queue), work = std::move(work)] {
        self->asking_->async([self, queue, completion = work.completion, picture = made(work)] {
            self->idle_.push_back(queue);
            self->startWaiting();
            completion(picture);
        });
    });
}

}  // namespace vantix
