#include "Tools/vantix-inapp/Configuration.h"

#include "Tools/vantix-inapp/Fields.h"

namespace vantix {

namespace {

constexpr double largestLength = 100'000;

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

double textScaleField(std::string_view key, const Value& value) { return numberField(key, value, 0.1, 10); }

Env environmentField(std::string_view key, const Value& value) {
    return wordField<Env>(key, value, {{"dev", Env::dev}, {"unittest", Env::unittest}});
}

LogLevel logLevelField(std::string_view key, const Value& value) {
    return wordField<LogLevel>(
        key, value,
        {{"debug", LogLevel::debug}, {"info", LogLevel::info}, {"error", LogLevel::error}, {"none", LogLevel::none}});
}

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
    return wordField<ApplicationState>(key, value,
                                       {{"active", ApplicationState::active},
                                        {"inactive", ApplicationState::inactive},
                                        {"background", ApplicationState::background}});
}

Configuration readConfiguration(const Dictionary& object) {
    expectOnlyKeys(
        "configure", object,
        {"environment", "applicationState", "appStoreId", "customerId", "appGroup", "notificationCore", "pushAllowed",
         "scene", "accountId", "baseURL", "sslKeyHash", "accessToken", "device", "textScale", "logLevel"});
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
    return configuration;
}

}  // namespace vantix
