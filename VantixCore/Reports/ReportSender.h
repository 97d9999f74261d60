#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Value.h"
#include "VantixCore/Network/BackEndClient.h"
#include "VantixCore/Reports/ReportOutbox.h"
#include "VantixCore/TransferHandle.h"
#include "VantixCore/VantixConfiguration.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace vantix {

/// Brings reports to the back end: in order, in batches, each at least once. What fails waits in the outbox and is
/// tried again (ReportPolicy), also by a later process; what the back end refuses for good is logged and dropped.
/// Without a base address nothing is sent. Usable from any thread; works on a queue of its own and waits for no call.
class ReportSender : public std::enable_shared_from_this<ReportSender> {
public:
    /// The queue is serial. `retrySpread`, from 0 to 1, spreads the moments of retries (ReportPolicy); by chance when
    /// empty.
    ReportSender(std::shared_ptr<ReportOutbox> outbox, std::shared_ptr<DispatchQueue> queue,
                 std::shared_ptr<BackEndClient> backEnd, std::function<double()> retrySpread);
    ~ReportSender();

    /// From now on reports go where this configuration says, those that wait first, at once.
    void use(std::shared_ptr<ConfigurationGenerator> configuration);

    /// Whether the report is kept; then it survives a sudden end of the process. Waits for the disk.
    bool keep(const char* kind, std::string_view name, const Dictionary& attributes);
    /// Sends what waits, soon, unless a retry does so later.
    void send();

private:
    /// A batch that has to be sent again.
    struct Failure {
        /// How long the back end asked to be left alone.
        Duration waitAsked{0};
    };

    void sendPending();
    void finish(const std::vector<PendingReport>& batch, const BackEndClient::Outcome& outcome);
    /// Absent when the batch is done with.
    static std::optional<Failure> failureOf(const std::vector<PendingReport>& batch,
                                            const BackEndClient::Outcome& outcome);
    void retryAfter(const Failure& failure);

    std::shared_ptr<DispatchQueue> queue_;
    std::shared_ptr<ReportOutbox> outbox_;
    std::shared_ptr<BackEndClient> backEnd_;

    // On the queue only.
    std::shared_ptr<ConfigurationGenerator> configuration_;
    bool isSending_ = false;
    TransferHandle transfer_;
    std::shared_ptr<DispatchWorkItem> retry_;
    int failures_ = 0;
    std::function<double()> retrySpread_;
};

}  // namespace vantix
