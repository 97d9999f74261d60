#pragma once

#include "VantixCore/BaseRepository.h"
#include "VantixCore/SharedUserDefaults.h"
#include "VantixCore/VantixEvents.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/InAppMessage.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// The only object that reads or writes stored messages. Store and settings are those of the installation it was made
/// in, also after a later one. Every operation returns at once and may be called on any
/// thread; completions run on the store thread, in order, and may be empty unless they take a list.
class InAppRepoHelper {
public:
    using Completion = std::function<void(bool)>;
    using ListCompletion = std::function<void(std::vector<InAppMessage>)>;

    /// The one instance of the installation, made at first use, always for `Env::dev`.
    static std::shared_ptr<InAppRepoHelper> shared();

    explicit InAppRepoHelper(Env environment = Env::dev);

    /// The record that keeps the message. A message that was read from a record of sound texts gives that record.
    static InAppMessage record(const VantixInAppMessagePayload& message);

    /// Adds a record, whether or not one with the same scope exists.
    void insert(const SharedPayload& message, Completion completion);
    /// Adds a record of each message that `next` gives, until it gives null, before anything that is asked for later.
    /// `next` is asked on the store thread, for one message at a time.
    void insertEach(std::function<SharedPayload()> next);
    /// The current customer's records, in the order of insertion. Without settings or customer there are none, and the
    /// completion is called within this call.
    void fetchAllInAppMessages(ListCompletion completion);
    /// Deletes at most one record of that scope.
    void removeMessage(const std::string& scope, Completion completion);
    /// Deletes every record whose trigger text mentions "APP_LAUNCH" anywhere, in any letter case.
    void removeAllExistingBroadcastMessages(Completion completion);
    /// Deletes the records of all customers.
    void removeAllMessages(Completion completion);

private:
    void removeInAppMessage(std::optional<Predicate> predicate, std::optional<int> fetchLimit,
                            std::function<void(Result<bool>)> completion);

    std::shared_ptr<BaseRepository> inAppRepo_;
    /// Null without an app group.
    std::shared_ptr<SharedUserDefaults> settings_;
};

}  // namespace vantix
