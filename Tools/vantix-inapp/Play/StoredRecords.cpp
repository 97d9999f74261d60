#include "Tools/vantix-inapp/Play/StoredRecords.h"

#include "VantixInAppMessage/Manager/InAppMessage.h"
#include "VantixInAppMessage/Manager/VantixInAppDBDefaults.h"

#include <utility>

namespace vantix {

namespace {

Dictionary columns(const InAppMessage& record) {
    Dictionary columns;
    for (int at = 0; at < InAppMessage::propertyCount; ++at) {
        auto property = static_cast<InAppMessage::Property>(at);
        const auto& text = record[property];
        columns.set(InAppMessage::name(property), text ? Value(*text) : Value());
    }
    return columns;
}

}  // namespace

void readStoredRecords(std::function<void(Value)> completion) {
    VantixInAppDBDefaults::repository(Env::dev)->fetch(
        {}, {}, [completion = std::move(completion)](const Result<std::vector<Record>>& result) {
            if (!result) return completion(result.error().localizedDescription);
            List rows;
            for (const Record& record : result.value()) rows.push_back(columns(InAppMessage::from(record)));
            completion(std::move(rows));
        });
}

}  // namespace vantix
