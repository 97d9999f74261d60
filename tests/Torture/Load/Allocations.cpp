#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Torture/Load/Housing.h"
#include "tests/Torture/Load/Trial.h"

namespace vantix {

namespace {

/// Fails each allocation of what is prepared, which stores a message, in turn: either it is stored, or a
/// line says that it is not, and the next message is stored again.
void failEachAllocation(Trial& trial, const std::string& what,
                        const std::function<std::function<void()>(VirtualHousing&, const Dictionary&)>& prepare) {
    VirtualHousing house(trial.folder / what);
    const auto& manager = house.core->inAppMessageQueueManager();
    auto isStored = [&] {
        bool is = false;
        manager->fetchAllInAppMessages([&](const std::vector<InAppMessage>& messages) { is = !messages.empty(); });
        house.dispatcher().runUntilIdle();
        manager->removeAllMessages({});
        house.dispatcher().runUntilIdle();
        return is;
    };
    const auto decode = prepare(house, Campaign{.event = "buy"}.push());
    bool hasFailed = true;
    for (long number = 0; hasFailed; ++number, ++trial.tried) {
        std::size_t errors = house.errors();
        const std::string where = what + ", allocation " + std::to_string(number);
        try {
            Memory::Failure failure(number);
            decode();
            hasFailed = failure.hasHappened();
        } catch (const std::bad_alloc&) {
            trial.expect(false, where + ": the failure reaches the application");
        }
        house.dispatcher().runUntilIdle();
        trial.expect(isStored() || house.errors() > errors, where + ": nothing was said of it");
        decode();
        house.dispatcher().runUntilIdle();
        trial.expect(isStored(), where + ": the next message is not stored");
    }
}

struct Answer final : VantixResponseGenerator {
    explicit Answer(const Dictionary& push) : data(R"({"status":"200","triggers":[)" + toJSON(push) + "]}") {}
    const std::optional<std::string>& rcvdData() const override { return data; }
    const std::optional<VantixError>& error() const override { return none; }
    std::optional<std::string> data;
    std::optional<VantixError> none;
};

}  // namespace

void failAllocations(Trial& trial) {
    failEachAllocation(trial, "push", [](VirtualHousing& house, const Dictionary& push) {
        return [&house, push] { house.notificationCore->receiveSilentPush("inapp", push); };
    });
    failEachAllocation(trial, "notification", [](VirtualHousing& house, const Dictionary& push) {
        std::optional delivered(std::vector{VantixNotificationPayload("inapp", push)});
        return [&house, delivered] { house.core->notificationsReceived(delivered); };
    });
    failEachAllocation(trial, "answer", [](VirtualHousing& house, const Dictionary& push) {
        auto triggers = VantixInAppTriggerManager::create(house.configuration);
        auto answer = std::make_shared<const Answer>(push);
        return [triggers, answer, payload = InAppTriggersRequestPayload{.cuID = "customer"}] {
            triggers->processReceived(answer, payload);
        };
    });
}

}  // namespace vantix
