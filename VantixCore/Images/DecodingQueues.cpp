#include "VantixCore/Images/DecodingQueues.h"

#include "Platform/Ports/RunningQueue.h"

#include <utility>

namespace vantix {

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
        self->asking_->async([self, queue, completion = work.completion, picture = work.make()] {
            self->idle_.push_back(queue);
            self->startWaiting();
            completion(picture);
        });
    });
}

}  // namespace vantix
