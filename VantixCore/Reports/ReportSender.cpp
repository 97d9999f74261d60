#include "VantixCore/Reports/ReportSender.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/JSON.h"
#include "Platform/Values/UUID.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/Reports/ReportRequest.h"
#include "VantixCore/VantixLogger.h"

#include <random>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Reports/ReportSender"};

std::function<double()> byChance() {
    return [random = std::minstd_rand(std::random_device{}())]() mutable {
        return std::uniform_real_distribution<>()(random);
    };
}

}  // namespace

ReportSender::ReportSender(std::shared_ptr<ReportOutbox> outbox, std::shared_ptr<DispatchQueue> queue,
                           std::shared_ptr<BackEndClient> backEnd, std::function<double()> retrySpread)
    : queue_(std::move(queue)),
      outbox_(std::move(outbox)),
      backEnd_(std::move(backEnd)),
      retrySpread_(retrySpread ? std::move(retrySpread) : byChance()) {}

/// Whoever lets go of the sender does not wait until the file is closed.
ReportSender::~ReportSender() {
    queue_->async([queue = queue_, outbox = std::move(outbox_)] {});
}

void ReportSender::use(std::shared_ptr<ConfigurationGenerator> configuration) {
    queue_->async([self = shared_from_this(), configuration = std::move(configuration)] {
        self->configuration_ = configuration;
        if (auto retry = std::exchange(self->retry_, nullptr)) retry->cancel();
        self->sendPending();
    });
}

bool ReportSender::keep(const char* kind, std::string_view name, const Dictionary& attributes) {
    std::string id = makeUUID();
    Dictionary event{{"id", id}, {"kind", kind}, {"name", std::string(name)}, {"attributes", attributes}};
    return outbox_->add({std::move(id), toJSON(event)});
}

void ReportSender::send() {
    queue_->async([self = shared_from_this()] { self->sendPending(); });
}

void ReportSender::sendPending() {
    assertOnQueue(*queue_, "ReportSender::sendPending");
    if (isSending_ || retry_ || !configuration_ || configuration_->baseURL().empty()) return;
    auto batch = outbox_->nextBatch();
    if (!batch) return retryAfter(Failure{});
    if (batch->empty()) return;
    isSending_ = true;
    ReportRequest request(configuration_, *batch);
    auto ended = whileAlive(weak_from_this(), [batch = std::move(*batch)](ReportSender& self, const auto& outcome) {
        self.finish(batch, outcome);
    });
    transfer_ = backEnd_->send(request, [queue = queue_, ended](BackEndClient::Outcome outcome) {
        queue->async([ended, outcome = std::move(outcome)] { ended(outcome); });
    });
}

void ReportSender::finish(const std::vector<PendingReport>& batch, const BackEndClient::Outcome& outcome) {
    assertOnQueue(*queue_, "ReportSender::finish");
    isSending_ = false;
    auto failure = failureOf(batch, outcome);
    if (!failure && !outbox_->remove(batch)) failure = Failure{};
    if (failure) return retryAfter(*failure);
    failures_ = 0;
    sendPending();
}

std::optional<ReportSender::Failure> ReportSender::failureOf(const std::vector<PendingReport>& batch,
                                                             const BackEndClient::Outcome& outcome) {
    constexpr const char* function = "failureOf(batch:outcome:)";
    const std::string count = std::to_string(batch.size());
    if (!outcome) {
        log.info(function,
                 [&] { return "Reports to be sent again: " + count + ". " + outcome.error().localizedDescription(); });
        return Failure{};
    }
    const BackEndAnswer& answer = outcome.value();
    if (ReportPolicy::isTaken(answer.httpStatus())) return {};
    const std::string status = std::to_string(answer.httpStatus());
    if (ReportPolicy::isFinalRefusal(answer.httpStatus())) {
        log.error(function,
                  [&] { return "Reports refused by the back end with status " + status + " and dropped: " + count; });
        return {};
    }
    log.info(function, [&] { return "Reports to be sent again after status " + status + ": " + count; });
    return Failure{answer.retryAfter()};
}

void ReportSender::retryAfter(const Failure& failure) {
    Duration wait = ReportPolicy::waitAfter(++failures_, failure.waitAsked, retrySpread_());
    auto retry = whileAlive(weak_from_this(), [](ReportSender& self) {
        self.retry_ = nullptr;
        self.sendPending();
    });
    retry_ = std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::none, std::move(retry));
    queue_->asyncAfter(wait, retry_);
}

}  // namespace vantix
