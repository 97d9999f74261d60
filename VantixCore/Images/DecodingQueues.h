#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/Result.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace vantix {

/// Makes pictures beside the queue that asks for them: one at a time on each queue of its own, the others wait in
/// order. So a picture that takes long neither holds up that queue nor, as long as others do not, any other picture.
/// Used on the asking queue only.
class DecodingQueues : public std::enable_shared_from_this<DecodingQueues> {
public:
    struct Work {
        /// Runs on one of the queues.
        std::function<Result<Image>()> make;
        /// Asked before the work begins; when it is not wanted any more nothing of it runs.
        std::function<bool()> isWanted;
        /// Runs on the asking queue.
        std::function<void(Result<Image>)> completion;
    };

    DecodingQueues(std::shared_ptr<DispatchQueue> asking, std::vector<std::shared_ptr<DispatchQueue>> queues);

    void run(Work work);

private:
    void startWaiting();
    void start(Work work);

    std::shared_ptr<DispatchQueue> asking_;
    std::vector<std::shared_ptr<DispatchQueue>> idle_;
    std::deque<Work> waiting_;
};

}  // namespace vantix
