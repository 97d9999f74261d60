#include "VantixCore/Network/HTTPTransport.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Network/BrokenPipeGuard.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/Network/TransferError.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace vantix {

namespace {

constexpr Duration slowness = seconds(3);

VantixError networkIsOff() { return transferError(VantixError::Kind::connection, "the network is off"); }

/// Takes the transfers that nobody waits for any more out of the list.
template <typename Transfers>
Transfers takeUnwanted(Transfers& transfers) {
    Transfers unwanted;
    for (auto next = transfers.begin(); next != transfers.end();) {
        auto transfer = next++;
        if (transfer->claim->isTaken()) unwanted.splice(unwanted.end(), transfers, transfer);
    }
    return unwanted;
}

}  // namespace

HTTPTransport::HTTPTransport(std::shared_ptr<DispatchQueue> queue, std::size_t maximumConcurrentTransfers)
    : queue_(std::move(queue)), mostTransfers_(std::max(maximumConcurrentTransfers, std::size_t{1})) {}

std::optional<VantixError> HTTPTransport::objectionTo(const HTTPRequest& request) {
    auto isControl = [](char character) { return std::iscntrl(static_cast<unsigned char>(character)) != 0; };
    for (const auto& [name, value] : request.headers) {
        if (std::ranges::any_of(name + value, isControl)) {
            return VantixError(VantixError::Kind::configuration, 0, "A header holds a control character: " + name);
        }
    }
    // libcurl takes a pin of another form for the name of a file.
    bool isPinned = !request.pin.empty() && request.url.scheme() != "http";
    if (isPinned && !request.pin.starts_with("sha256//")) {
        return transferError(VantixError::Kind::pin, "a pin is written as sha256//BASE64");
    }
    return {};
}

TransferHandle HTTPTransport::send(HTTPRequest request, HTTPCompletion completion) {
    if (auto objection = objectionTo(request)) return refuse(*std::move(objection), std::move(completion));

    NetworkFault fault = fault_;
    if (fault == NetworkFault::off) return refuse(networkIsOff(), std::move(completion));

    auto claim = std::make_shared<CallClaim>();
    auto start = std::chrono::steady_clock::now() + (fault == NetworkFault::slow ? slowness : Duration{});
    std::string origin = request.url.origin();
    TransferPurpose purpose = request.purpose;
    std::unique_lock lock(mutex_);
    waiting_.push_back({std::move(request), std::move(completion), claim, std::move(origin), purpose, start});
    callDriver(std::move(lock));
    auto wakeUp = whileAlive(weak_from_this(), [](HTTPTransport& self) { self.multi_.wakeUp(); });
    return TransferHandle([claim, wakeUp] {
        if (claim->take()) wakeUp();
    });
}

TransferHandle HTTPTransport::refuse(VantixError error, HTTPCompletion completion) {
    auto claim = std::make_shared<CallClaim>();
    queue_->async([claim, error = std::move(error), completion = std::move(completion)] {
        if (claim->take()) completion(error);
    });
    return TransferHandle([claim] { claim->take(); });
}

void HTTPTransport::cancelAll() {
    std::unique_lock lock(mutex_);
    cancelled_.splice(cancelled_.end(), waiting_);
    isCancelling_ = true;
    callDriver(std::move(lock));
}

void HTTPTransport::setFault(NetworkFault fault) {
    fault_ = fault;
    if (fault == NetworkFault::off) cancelAll();
}

/// The driving on the network queue. When that is closed and drops it, nobody will drive any more.
class HTTPTransport::Drive {
public:
    explicit Drive(std::shared_ptr<HTTPTransport> transport) : transport_(std::move(transport)) {}
    ~Drive() {
        if (transport_) transport_->abandon();
    }
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;

    void run() { std::exchange(transport_, nullptr)->drive(); }

private:
    std::shared_ptr<HTTPTransport> transport_;
};

void HTTPTransport::callDriver(std::unique_lock<std::mutex> lock) {
    if (isDriving_) return multi_.wakeUp();
    isDriving_ = true;
    lock.unlock();
    queue_->async([drive = std::make_shared<Drive>(shared_from_this())] { drive->run(); });
}

/// Completions may hold whoever holds this, so none is kept that will never be called.
void HTTPTransport::abandon() {
    Transfers waiting, cancelled;
    std::lock_guard lock(mutex_);
    waiting.swap(waiting_);
    cancelled.swap(cancelled_);
    isDriving_ = isCancelling_ = false;
}

void HTTPTransport::drive() {
    assertOnQueue(*queue_, "HTTPTransport::drive");
    BrokenPipeGuard guard;
    while (true) {
        failCancelled();
        dropUnwanted();
        auto now = std::chrono::steady_clock::now();
        startWaiting(now);
        if (rests()) return;
        auto ended = multi_.perform();
        for (const auto& each : ended) finish(each);
        if (ended.empty()) multi_.wait(timeToNextStart(now));
    }
}

void HTTPTransport::failCancelled() {
    assertOnQueue(*queue_, "HTTPTransport::failCancelled");
    Transfers cancelled;
    {
        std::lock_guard lock(mutex_);
        if (!std::exchange(isCancelling_, false)) return;
        cancelled.swap(cancelled_);
    }
    for (Transfer& transfer : underWay_) multi_.remove(*transfer.exchange);
    cancelled.splice(cancelled.begin(), underWay_);
    for (Transfer& transfer : cancelled) {
        transfer.complete(transferError(VantixError::Kind::connection, "it was cancelled"));
    }
}

void HTTPTransport::dropUnwanted() {
    assertOnQueue(*queue_, "HTTPTransport::dropUnwanted");
    Transfers unwanted;
    {
        std::lock_guard lock(mutex_);
        unwanted = takeUnwanted(waiting_);
    }
    Transfers ended = takeUnwanted(underWay_);
    for (Transfer& transfer : ended) multi_.remove(*transfer.exchange);
}

void HTTPTransport::startWaiting(Time now) {
    assertOnQueue(*queue_, "HTTPTransport::startWaiting");
    {
        std::lock_guard lock(mutex_);
        for (auto next = waiting_.begin(); next != waiting_.end() && underWay_.size() < mostTransfers_;) {
            auto candidate = next++;
            if (candidate->start <= now && hasRoomFor(*candidate))
                underWay_.splice(underWay_.end(), waiting_, candidate);
        }
    }
    for (Transfer& transfer : underWay_) {
        if (transfer.exchange) continue;
        transfer.exchange = std::make_unique<CurlTransfer>(std::move(transfer.request));
        multi_.add(*transfer.exchange);
    }
}

/// Of those that are late; for others the end of a transfer makes room.
Duration HTTPTransport::timeToNextStart(Time now) {
    Duration time = Duration::max();
    std::lock_guard lock(mutex_);
    for (const Transfer& transfer : waiting_) {
        if (transfer.start > now) time = std::min<Duration>(time, transfer.start - now);
    }
    return time;
}

bool HTTPTransport::hasRoomFor(const Transfer& candidate) const {
    std::size_t ofItsKind = 0, toItsOrigin = 0;
    for (const Transfer& transfer : underWay_) {
        if (transfer.purpose != candidate.purpose) continue;
        ++ofItsKind;
        if (transfer.origin == candidate.origin) ++toItsOrigin;
    }
    std::size_t reserved = candidate.purpose == TransferPurpose::image ? NetworkPolicy::transfersForCalls : 0;
    bool hasRoom = ofItsKind == 0 || ofItsKind + reserved < mostTransfers_;
    return hasRoom && toItsOrigin < NetworkPolicy::mostTransfersPerOrigin;
}

/// Ends the driving when nothing is left to drive.
bool HTTPTransport::rests() {
    std::lock_guard lock(mutex_);
    isDriving_ = isCancelling_ || !waiting_.empty() || !underWay_.empty();
    return !isDriving_;
}

void HTTPTransport::finish(const CurlMulti::Ended& ended) {
    assertOnQueue(*queue_, "HTTPTransport::finish");
    auto isMeant = [&ended](const Transfer& transfer) { return transfer.exchange.get() == &ended.transfer; };
    Transfers done;
    done.splice(done.end(), underWay_, std::ranges::find_if(underWay_, isMeant));
    done.front().complete(ended.transfer.outcome(ended.code));
}

void HTTPTransport::Transfer::complete(HTTPOutcome outcome) {
    if (claim->take()) completion(std::move(outcome));
}

}  // namespace vantix
