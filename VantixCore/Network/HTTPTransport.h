#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "VantixCore/Network/CallClaim.h"
#include "VantixCore/Network/CurlMulti.h"
#include "VantixCore/Network/HTTPRequest.h"
#include "VantixCore/Network/HTTPResponse.h"
#include "VantixCore/NetworkFault.h"
#include "VantixCore/TransferHandle.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vantix {

/// Exchanges requests for answers, and nothing more: no redirects, no cookies, no retries. Connections are kept alive
/// and shared. Usable from any thread; owned by a shared pointer.
///
/// One piece of work on the network queue drives all transfers and ends with the last of them, so that an idle
/// transport neither occupies a thread nor wakes one.
class HTTPTransport : public std::enable_shared_from_this<HTTPTransport> {
public:
    /// `queue` is the network queue: serial, and for this transport alone. At most so many transfers are under way at a
    /// time; the others wait and start in order, except that those to an origin that has its share
    /// (NetworkPolicy::mostTransfersPerOrigin), and images where only the room for calls is left, let others pass.
    HTTPTransport(std::shared_ptr<DispatchQueue> queue, std::size_t maximumConcurrentTransfers);

    /// Why such a request is not even sent, but fails at once, if so.
    static std::optional<VantixError> objectionTo(const HTTPRequest& request);

    /// The completion runs on the network queue, at most once, and must not block.
    TransferHandle send(HTTPRequest request, HTTPCompletion completion);
    /// For a request that is not sent: the completion runs as after `send`, with this error.
    TransferHandle refuse(VantixError error, HTTPCompletion completion);

    /// Every transfer that was handed over before fails soon (`connection`), so that nobody waits for it any more.
    void cancelAll();

    /// From now on transfers meet this fault. Any thread.
    void setFault(NetworkFault fault);

private:
    using Time = std::chrono::steady_clock::time_point;

    struct Transfer {
        HTTPRequest request;
        HTTPCompletion completion;
        std::shared_ptr<CallClaim> claim;
        std::string origin;
        TransferPurpose purpose;
        /// Not before.
        Time start;
        /// From the start on.
        std::unique_ptr<CurlTransfer> exchange = {};

        void complete(HTTPOutcome outcome);
    };
    using Transfers = std::list<Transfer>;

    class Drive;

    void callDriver(std::unique_lock<std::mutex> lock);
    void drive();
    void abandon();
    void failCancelled();
    void dropUnwanted();
    void startWaiting(Time now);
    Duration timeToNextStart(Time now);
    bool hasRoomFor(const Transfer& candidate) const;
    bool rests();
    void finish(const CurlMulti::Ended& ended);

    std::shared_ptr<DispatchQueue> queue_;
    std::size_t mostTransfers_;
    std::atomic<NetworkFault> fault_ = NetworkFault::none;
    CurlMulti multi_;

    // On the network queue only.
    Transfers underWay_;

    std::mutex mutex_;
    // Behind the mutex.
    Transfers waiting_;
    Transfers cancelled_;
    bool isCancelling_ = false;
    bool isDriving_ = false;
};

}  // namespace vantix
