#include "Tools/vantix-inapp/Play/EventLines.h"

#include "DeclarativeUI/HostedView.h"
#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Tools/vantix-inapp/Play/LineWriter.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"

namespace vantix {

namespace {

using MessageWindow = HostingController<InAppMessageView>;

const VantixInAppMessagePayload* messageOf(const HostedView& view) {
    auto* window = dynamic_cast<const MessageWindow*>(&view);
    return window ? &window->rootView().viewModel()->inAppMessage() : nullptr;
}

Dictionary scopeAndType(const VantixInAppMessagePayload& message) {
    return {{"scope", message.scope}, {"type", std::string(rawValue(message.body.type))}};
}

std::string textOrNothing(const Dictionary& dictionary, const char* key) {
    const std::string* text = dictionary.text(key);
    return text ? *text : "";
}

/// As much of a message as the report of it tells.
VantixInAppMessagePayload messageOfReport(const Dictionary& attributes) {
    namespace Keys = VantixConstants::Keys::APIRequestKeys;
    VantixInAppMessagePayload message;
    message.scope = textOrNothing(attributes, Keys::scope);
    message.cuid = textOrNothing(attributes, Keys::cuid);
    message.senderID = textOrNothing(attributes, Keys::senderId);
    message.messageId = textOrNothing(attributes, Keys::messageId);
    return message;
}

/// What differs from report to report of a message: the person's answer.
Dictionary answerIn(const Dictionary& attributes) {
    namespace Keys = VantixConstants::Keys::APIRequestKeys;
    Dictionary answer;
    for (const char* key : {Keys::rating, Keys::feedback, Keys::feedbackOptions}) {
        if (const Value* value = attributes.find(key)) answer.set(key, *value);
    }
    return answer;
}

}  // namespace

VantixHost EventLines::host() {
    VantixHost host;
    host.logSink = [this](const LogLine& line) { printLog(line); };
    host.openURL = [this](const std::string& url) { lines_.write("opened", url); };
    host.onReport = [this](const char* kind, std::string_view name, const Dictionary& attributes) {
        printReport(kind, name, attributes);
    };
    host.onCallToAction = [this](const CTA& cta, const Dictionary& payload) { printCallToAction(cta, payload); };
    host.onRequest = [this](const SentRequest& request) { printRequest(request); };
    return host;
}

void EventLines::observe(OffscreenScene& scene) {
    scene.setOnShown([this](const HostedView& view) {
        const VantixInAppMessagePayload* message = messageOf(view);
        if (!message) return;
        rememberShown(*message);
        lines_.write("shown", scopeAndType(*message));
    });
    scene.setOnHidden([this](const HostedView& view) {
        if (const VantixInAppMessagePayload* message = messageOf(view)) lines_.write("hidden", scopeAndType(*message));
    });
}

VantixInAppMessagePayload EventLines::shownLast() const {
    std::lock_guard lock(mutex_);
    return shownLast_;
}

void EventLines::rememberShown(const VantixInAppMessagePayload& message) {
    std::lock_guard lock(mutex_);
    shownLast_ = message;
}

void EventLines::printLog(const LogLine& line) {
    if (line.level < logLevel_ || silencedThread_ == std::this_thread::get_id()) return;
    lines_.write("log", Dictionary{{"level", std::string(logLevelWords.word(line.level))},
                                   {"file", line.file},
                                   {"function", line.function},
                                   {"message", line.message}});
}

void EventLines::printReport(const char* kind, std::string_view name, const Dictionary& attributes) {
    Dictionary report{{"kind", kind}, {"name", std::string(name)}};
    Dictionary told = printsReportAttributes_ ? attributes : answerIn(attributes);
    if (!told.isEmpty()) report.set("attributes", std::move(told));
    lines_.write("report", std::move(report));
    bool isShown = name == rawValue(VantixDLREvents::inAppMessageShown);
    if (isShown && !hasWindows_) rememberShown(messageOfReport(attributes));
}

void EventLines::printCallToAction(const CTA& cta, const Dictionary& payload) {
    lines_.write("cta", Dictionary{{"type", cta.type},
                                   {"action", cta.action},
                                   {"actionText", cta.actionText ? Value(*cta.actionText) : Value()},
                                   {"scope", textOrNothing(payload, VantixConstants::Keys::APIRequestKeys::scope)}});
}

void EventLines::printRequest(const SentRequest& request) {
    Dictionary headers;
    for (const auto& [name, value] : request.headers) headers.set(name, value);
    lines_.write(
        "request",
        Dictionary{{"method", request.method}, {"url", request.url}, {"headers", headers}, {"body", request.body}});
}

}  // namespace vantix
