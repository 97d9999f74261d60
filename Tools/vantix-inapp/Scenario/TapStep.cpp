#include "Tools/vantix-inapp/Scenario/TapStep.h"

#include "Tools/vantix-inapp/Input/Fields.h"
#include "Tools/vantix-inapp/Scenario/StepSource.h"

namespace vantix {

namespace {

constexpr double farthest = 1e6;

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
    if (const Value* role = aim.find("role")) tap.role = wordField("role", *role, tappableRoles);
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
