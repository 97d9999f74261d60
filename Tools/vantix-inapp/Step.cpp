#include "Tools/vantix-inapp/Step.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Campaign.h"
#include "Tools/vantix-inapp/Configuration.h"
#include "Tools/vantix-inapp/Fields.h"

#include <chrono>
#include <map>

namespace vantix {

namespace {

constexpr double longestWait = 1e9;
constexpr double farthest = 1e6;

/// A step while it is read: its key, the value under it, and the line that it stands in.
struct Source {
    std::string_view key;
    const Value& value;
    const Dictionary& object;
    std::string_view line;
};

Step push(const Source& source) { return step::Push{objectField(source.key, source.value)}; }

Step campaign(const Source& source) {
    objectField(source.key, source.value);
    return step::Push{pushOfCampaign(*objectAsWritten(source.line, source.key))};
}

Step deliver(const Source& source) {
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

Step payload(const Source& source) { return step::Payload{objectField(source.key, source.value)}; }

Step event(const Source& source) {
    step::Event event{textField(source.key, source.value), {}};
    if (const Value* attributes = source.object.find("attributes")) {
        event.attributes = objectField("attributes", *attributes);
    }
    return event;
}

Step lifeCycle(const Source& source) {
    using namespace ApplicationNotification;
    return step::LifeCycle{wordField<const char*>(source.key, source.value,
                                                  {{didBecomeActive, didBecomeActive},
                                                   {willResignActive, willResignActive},
                                                   {didEnterBackground, didEnterBackground},
                                                   {willTerminate, willTerminate}})};
}

Step setScene(const Source& source) { return step::SetScene{boolField(source.key, source.value)}; }

Step setPushAllowed(const Source& source) { return step::SetPushAllowed{boolField(source.key, source.value)}; }

Step setCustomer(const Source& source) {
    if (source.value.isNull()) return step::SetCustomer{};
    return step::SetCustomer{textField(source.key, source.value)};
}

Step wait(const Source& source) {
    std::chrono::duration<double> length(numberField(source.key, source.value, 0, longestWait));
    return step::Wait{std::chrono::round<Duration>(length)};
}

std::string tappableRole(const Value& value) {
    return wordField<const char*>("role", value,
                                  {{"close", "close"},
                                   {"button", "button"},
                                   {"star", "star"},
                                   {"option", "option"},
                                   {"image", "image"},
                                   {"card", "card"},
                                   {"row", "row"}});
}

step::Tap tapAtPoint(const Dictionary& aim) {
    expectOnlyKeys("tap", aim, {"x", "y"});
    const Value* x = aim.find("x");
    const Value* y = aim.find("y");
    if (!x || !y) throw BadInput("\"tap\" needs both \"x\" and \"y\"");
    step::Tap tap;
    tap.point = {numberField("x", *x, -farthest, farthest), numberField("y", *y, -farthest, farthest)};
    return tap;
}

step::Tap tapOnElement(const Dictionary& aim) {
    expectOnlyKeys("tap", aim, {"role", "label", "index", "x", "y"});
    if (aim.isEmpty()) throw BadInput("\"tap\" needs a \"role\", a \"label\", an \"index\", or \"x\" and \"y\"");
    step::Tap tap;
    if (const Value* role = aim.find("role")) tap.role = tappableRole(*role);
    if (const Value* label = aim.find("label")) tap.label = textField("label", *label);
    if (const Value* index = aim.find("index")) tap.index = indexField("index", *index);
    return tap;
}

Step tap(const Source& source) {
    const Dictionary& aim = objectField(source.key, source.value);
    return aim.find("x") || aim.find("y") ? tapAtPoint(aim) : tapOnElement(aim);
}

Step scroll(const Source& source) { return step::Scroll{numberField(source.key, source.value, -farthest, farthest)}; }

Step sync(const Source& source) {
    const Dictionary& request = objectField(source.key, source.value);
    expectOnlyKeys(source.key, request, {"cuID"});
    const Value* cuID = request.find("cuID");
    if (!cuID) throw BadInput("\"sync\" needs a \"cuID\"");
    return step::Sync{textField("cuID", *cuID)};
}

Step restart(const Source& source) {
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

Step screenshot(const Source& source) {
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
Step wish(const Source& source) {
    trueField(source.key, source.value);
    return Wish{};
}

using Reader = Step (*)(const Source& source);

const std::map<std::string_view, Reader>& readers() {
    static const std::map<std::string_view, Reader> all = {
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
        {"tap", tap},
        {"scroll", scroll},
        {"dismiss", wish<step::Dismiss>},
        {"buttonAction", wish<step::ButtonAction>},
        {"logout", wish<step::LogOut>},
        {"sync", sync},
        {"restart", restart},
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

Step readStep(std::string_view line, const Dictionary& object) {
    std::string_view key = stepName(object);
    if (key == "event") {
        expectOnlyKeys(key, object, {key, "attributes"});
    } else {
        expectOnlyKeys(key, object, {key});
    }
    return readers().at(key)({key, *object.find(key), object, line});
}

}  // namespace vantix
