#include "Tools/vantix-inapp/Scenario/StepReader.h"

#include "Platform/Values/JSONText.h"
#include "Tools/vantix-inapp/Input/Campaign.h"
#include "Tools/vantix-inapp/Input/Fields.h"
#include "Tools/vantix-inapp/Scenario/BackendStep.h"
#include "Tools/vantix-inapp/Scenario/ConfigureStep.h"
#include "Tools/vantix-inapp/Scenario/StepSource.h"
#include "Tools/vantix-inapp/Scenario/TapStep.h"

#include <array>
#include <chrono>
#include <map>

namespace vantix {

namespace {

constexpr double farthest = 1e6;

constexpr std::array<std::string_view, 4> lifeCycleNotifications{
    ApplicationNotification::didBecomeActive, ApplicationNotification::willResignActive,
    ApplicationNotification::didEnterBackground, ApplicationNotification::willTerminate};

Step push(const StepSource& source) { return step::Push{objectField(source.key, source.value)}; }

Step campaign(const StepSource& source) {
    objectField(source.key, source.value);
    return step::Push{pushOfCampaignText(*objectAsWritten(source.line, source.key))};
}

Step deliver(const StepSource& source) {
    if (source.value.isNull()) return step::Deliver{};
    std::vector<VantixNotificationPayload> notifications;
    for (const Value& element : listField(source.key, source.value)) {
        const Dictionary& notification = objectField("deliver", element);
        expectOnlyKeys("deliver", notification, {"type", "payload"});
        const Value* type = notification.find("type");
        const Value* payload = notification.find("payload");
        if (!type || !payload) throw BadInput("\"deliver\" needs a \"type\" and a \"payload\" for each notification");
        notifications.emplace_back(textField("type", *type), objectField("payload", *payload));
    }
    return step::Deliver{std::move(notifications)};
}

Step payload(const StepSource& source) { return step::Payload{objectField(source.key, source.value)}; }

Step event(const StepSource& source) {
    step::Event event{textField(source.key, source.value), {}};
    if (const Value* attributes = source.object.find("attributes")) {
        event.attributes = objectField("attributes", *attributes);
    }
    return event;
}

Step lifeCycle(const StepSource& source) {
    return step::LifeCycle{wordField(source.key, source.value, lifeCycleNotifications)};
}

Step setScene(const StepSource& source) { return step::SetScene{boolField(source.key, source.value)}; }

Step setPushAllowed(const StepSource& source) { return step::SetPushAllowed{boolField(source.key, source.value)}; }

Step setCustomer(const StepSource& source) {
    if (source.value.isNull()) return step::SetCustomer{};
    return step::SetCustomer{textField(source.key, source.value)};
}

Step wait(const StepSource& source) {
    std::chrono::duration<double> length(numberField(source.key, source.value, 0, longestWait.count()));
    return step::Wait{std::chrono::round<Duration>(length)};
}

Step scroll(const StepSource& source) {
    return step::Scroll{numberField(source.key, source.value, -farthest, farthest)};
}

Step sync(const StepSource& source) {
    const Dictionary& request = objectField(source.key, source.value);
    expectOnlyKeys(source.key, request, {"cuID"});
    const Value* cuID = request.find("cuID");
    if (!cuID) throw BadInput("\"sync\" needs a \"cuID\"");
    return step::Sync{textField("cuID", *cuID)};
}

Step restart(const StepSource& source) {
    step::Restart restart;
    if (const Dictionary* object = source.value.dictionary()) {
        expectOnlyKeys(source.key, *object, {"applicationState"});
        const Value* state = object->find("applicationState");
        if (state) restart.applicationState = applicationStateField("applicationState", *state);
    } else {
        trueField(source.key, source.value);
    }
    return restart;
}

Step faults(const StepSource& source) {
    const Dictionary& object = objectField(source.key, source.value);
    expectOnlyKeys(source.key, object, {"disk"});
    const Value* disk = object.find("disk");
    if (!disk) throw BadInput("\"faults\" needs a \"disk\"");
    return step::SetDiskFault{wordField("disk", *disk, diskFaultWords)};
}

Step screenshot(const StepSource& source) {
    std::filesystem::path name = textField(source.key, source.value);
    bool leaves = name.is_absolute();
    for (const auto& part : name) leaves = leaves || part == "..";
    if (leaves || !name.has_filename() || name.string().find('\0') != std::string::npos) {
        throw BadInput("\"screenshot\" must name a file inside the output folder");
    }
    return step::Screenshot{name};
}

/// A step that carries nothing but the wish for it.
template <typename Wish>
Step wish(const StepSource& source) {
    trueField(source.key, source.value);
    return Wish{};
}

using Reader = Step (*)(const StepSource& source);

const std::map<std::string_view, Reader>& readers() {
    static const auto& all = *new const std::map<std::string_view, Reader>{
        {"push", push},
        {"campaign", campaign},
        {"deliver", deliver},
        {"payload", payload},
        {"event", event},
        {"state", lifeCycle},
        {"scene", setScene},
        {"pushAllowed", setPushAllowed},
        {"customer", setCustomer},
        {"wait", wait},
        {"tap", readTap},
        {"scroll", scroll},
        {"dismiss", wish<step::Dismiss>},
        {"buttonAction", wish<step::ButtonAction>},
        {"logout", wish<step::LogOut>},
        {"sync", sync},
        {"restart", restart},
        {"backend", readBackend},
        {"faults", faults},
        {"elements", wish<step::PrintElements>},
        {"store", wish<step::PrintStore>},
        {"queues", wish<step::PrintQueues>},
        {"screenshot", screenshot},
    };
    return all;
}

/// The one step that the line names; whatever stands beside it must belong to it.
std::string_view stepName(const Dictionary& object) {
    std::string_view name;
    for (const auto& [key, value] : object) {
        if (!readers().contains(key)) continue;
        if (!name.empty()) throw BadInput("two steps in one line: " + inQuotes(name) + " and " + inQuotes(key));
        name = key;
    }
    if (name.empty()) {
        throw BadInput(object.isEmpty() ? "no step" : "unknown step " + inQuotes(object.begin()->first));
    }
    return name;
}

}  // namespace

Step readStep(std::string_view line, const Dictionary& object, const std::filesystem::path& folder) {
    std::string_view key = stepName(object);
    if (key == "event") {
        expectOnlyKeys(key, object, {key, "attributes"});
    } else {
        expectOnlyKeys(key, object, {key});
    }
    return readers().at(key)({key, *object.find(key), object, line, folder});
}

}  // namespace vantix
