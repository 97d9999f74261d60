#include "Tools/vantix-inapp/Scenario/ConfigureStep.h"

#include "Platform/Values/Value.h"
#include "Platform/Values/WordTable.h"
#include "Tools/vantix-inapp/Input/Fields.h"

namespace vantix {

namespace {

constexpr double largestLength = 100'000;

constexpr WordTable<Env, 2> environments{{{Env::dev, "dev"}, {Env::unittest, "unittest"}}};

constexpr WordTable<ApplicationState, 3> applicationStates{{{ApplicationState::active, "active"},
                                                            {ApplicationState::inactive, "inactive"},
                                                            {ApplicationState::background, "background"}}};

/// Sets the field when the object has the key.
template <typename Field, typename Reader>
void read(const Dictionary& object, std::string_view key, Reader reader, Field& field) {
    if (const Value* value = object.find(key)) field = reader(key, *value);
}

std::optional<std::string> optionalTextField(std::string_view key, const Value& value) {
    if (value.isNull()) return {};
    return textField(key, value);
}

double lengthField(std::string_view key, const Value& value) { return numberField(key, value, 0, largestLength); }

double textScaleField(std::string_view key, const Value& value) {
    return numberField(key, value, smallestTextScale, largestTextScale);
}

Env environmentField(std::string_view key, const Value& value) { return wordField(key, value, environments); }

LogLevel logLevelField(std::string_view key, const Value& value) { return wordField(key, value, logLevelWords); }

EdgeInsets safeAreaField(std::string_view key, const Value& value) {
    const List& edges = listField(key, value);
    if (edges.size() != 4) throw BadInput(inQuotes(key) + " must be [top, left, bottom, right]");
    auto edge = [&](std::size_t at) { return lengthField(key, edges[at]); };
    return {edge(0), edge(1), edge(2), edge(3)};
}

SceneTraits deviceField(std::string_view key, const Value& value) {
    if (value.text()) return deviceNamed(*value.text()).traits;
    if (!value.dictionary()) throw BadInput(inQuotes(key) + " must be a device's name or an object");
    const Dictionary& object = *value.dictionary();
    expectOnlyKeys(key, object, {"width", "height", "scale", "safeArea"});
    SceneTraits traits;
    read(object, "width", lengthField, traits.size.width);
    read(object, "height", lengthField, traits.size.height);
    read(object, "scale", lengthField, traits.scale);
    read(object, "safeArea", safeAreaField, traits.safeArea);
    expectUsable(traits);
    return traits;
}

}  // namespace

ApplicationState applicationStateField(std::string_view key, const Value& value) {
    return wordField(key, value, applicationStates);
}

Configuration readConfiguration(const Dictionary& object) {
    expectOnlyKeys("configure", object,
                   {"environment", "applicationState", "appStoreId", "customerId", "appGroup", "notificationCore",
                    "pushAllowed", "scene", "accountId", "baseURL", "sslKeyHash", "accessToken", "device", "textScale",
                    "logLevel", "reportAttributes"});
    Configuration configuration;
    read(object, "environment", environmentField, configuration.environment);
    read(object, "applicationState", applicationStateField, configuration.applicationState);
    read(object, "appStoreId", optionalTextField, configuration.appStoreId);
    read(object, "customerId", optionalTextField, configuration.customerId);
    read(object, "appGroup", boolField, configuration.appGroup);
    read(object, "notificationCore", boolField, configuration.notificationCore);
    read(object, "pushAllowed", boolField, configuration.pushAllowed);
    read(object, "scene", boolField, configuration.scene);
    read(object, "accountId", textField, configuration.accountId);
    read(object, "baseURL", textField, configuration.baseURL);
    read(object, "sslKeyHash", textField, configuration.sslKeyHash);
    read(object, "accessToken", textField, configuration.accessToken);
    read(object, "device", deviceField, configuration.device);
    read(object, "textScale", textScaleField, configuration.device.textScale);
    read(object, "logLevel", logLevelField, configuration.logLevel);
    read(object, "reportAttributes", boolField, configuration.reportAttributes);
    return configuration;
}

}  // namespace vantix
