#include "Tools/vantix-inapp/Scenario/TapStep.h"

#include "DeclarativeUI/AccessibleElement.h"
#include "Tools/vantix-inapp/Input/Fields.h"
#include "Tools/vantix-inapp/Scenario/StepSource.h"

namespace vantix {

namespace {

constexpr double farthest = 1e6;

Role tappableRole(const Value& word) {
    auto role = roleWords.value(textField("role", word));
    if (role && takesTaps(*role)) return *role;
    std::string all;
    for (const auto& [known, name] : roleWords.entries) {
        if (takesTaps(known)) all += (all.empty() ? "" : ", ") + inQuotes(name);
    }
    throw BadInput("\"role\" must be one of " + all);
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

}  // namespace

Step readTap(const StepSource& source) {
    const Dictionary& aim = objectField(source.key, source.value);
    return aim.find("x") || aim.find("y") ? tapAtPoint(aim) : tapOnElement(aim);
}

}  // namespace vantix
