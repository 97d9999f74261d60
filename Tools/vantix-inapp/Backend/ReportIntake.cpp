#include "Tools/vantix-inapp/Backend/ReportIntake.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <utility>

namespace vantix {

void ReportIntake::take(std::string_view batch) {
    auto content = parseJSON(batch);
    const Dictionary* object = content ? content.value().dictionary() : nullptr;
    const List* events = object ? object->list("events") : nullptr;
    if (!events) throw BadInput("no reports");

    std::lock_guard lock(mutex_);
    for (const Value& event : *events) {
        if (event.dictionary()) takeOne(*event.dictionary());
    }
}

void ReportIntake::takeOne(Dictionary event) {
    const std::string* identity = event.text("id");
    if (identity && !known_.insert(*identity).second) event.set("repeated", true);
    onReport_(toJSON(event));
}

}  // namespace vantix
