#include "Tools/vantix-inapp/Scenario/BackendStep.h"

#include "Platform/Values/JSON.h"
#include "Platform/Values/JSONText.h"
#include "Tools/vantix-inapp/Backend/EventsAnswer.h"
#include "Tools/vantix-inapp/Input/Fields.h"
#include "Tools/vantix-inapp/Scenario/BackendAddress.h"
#include "Tools/vantix-inapp/Scenario/StepSource.h"

namespace vantix {

namespace {

/// What the command's file would hold: an object as it is written, a list, or any text.
std::string triggersText(const StepSource& source, const Value& value) {
    if (value.text()) return *value.text();
    if (value.list()) return toJSON(value);
    objectField("triggers", value);
    return *objectAsWritten(*objectAsWritten(source.line, source.key), "triggers");
}

std::filesystem::path imageFolder(const StepSource& source, const Value& value) {
    auto folder = source.folder / textField("images", value);
    if (!std::filesystem::is_directory(folder)) throw BadInput("\"images\" must be a folder");
    return folder;
}

}  // namespace

Step readBackend(const StepSource& source) {
    const Dictionary& object = objectField(source.key, source.value);
    expectOnlyKeys(source.key, object, {"triggers", "images", "tls", "delay", "fail", "truncate"});
    BackendOptions options;
    if (const Value* triggers = object.find("triggers")) {
        std::string text = triggersText(source, *triggers);
        eventsAnswer(text);
        options.triggers = [text](const std::string& address) { return withBackendAddress(text, address); };
    }
    if (const Value* images = object.find("images")) options.images = imageFolder(source, *images);
    if (const Value* tls = object.find("tls")) options.usesTLS = boolField("tls", *tls);
    if (const Value* delay = object.find("delay")) {
        options.delay = numberField("delay", *delay, 0, BackendOptions::longestDelay);
    }
    if (const Value* fail = object.find("fail")) options.failures = indexField("fail", *fail);
    if (const Value* truncate = object.find("truncate")) options.truncates = boolField("truncate", *truncate);
    return step::StartBackend{std::move(options)};
}

}  // namespace vantix
