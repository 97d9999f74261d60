#include "CampaignCheck/Rules/WrittenFields.h"

#include "CampaignCheck/Text/JSONWalk.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <algorithm>

namespace vantix {

namespace {

/// More than any device draws.
constexpr std::size_t mostTexts = 1000;

using Visit = std::function<void(const WrittenField&)>;

const CampaignField* fieldNamed(std::string_view key, const std::vector<const CampaignField*>& fields) {
    auto found = std::ranges::find(fields, key, &CampaignField::key);
    return found == fields.end() ? nullptr : *found;
}

void visitMembers(const Dictionary& object, const std::string& place, const std::string& container, const Visit& visit);

void visitContent(const WrittenField& written, const Visit& visit) {
    std::string container = written.container + "/" + std::string(written.key);
    if (written.field->kind == FieldKind::object && written.value.dictionary()) {
        visitMembers(*written.value.dictionary(), written.place, container, visit);
    }
    if (written.field->kind == FieldKind::objects && written.value.list()) {
        const List& list = *written.value.list();
        for (std::size_t index = 0; index < list.size(); ++index) {
            if (!list[index].dictionary()) continue;
            visitMembers(*list[index].dictionary(), placeOf(written.place, index), container + "/*", visit);
        }
    }
}

void visitMembers(const Dictionary& object, const std::string& place, const std::string& container,
                  const Visit& visit) {
    const auto fields = object.isEmpty() ? std::vector<const CampaignField*>() : fieldsIn(container);
    for (const auto& [key, value] : object) {
        WrittenField written{place + "/" + pointerStep(key), key, value, container, fieldNamed(key, fields)};
        visit(written);
        if (written.field) visitContent(written, visit);
    }
}

}  // namespace

void forEachWrittenField(const Campaign& campaign, const Visit& visit) {
    visitMembers(campaign.push, "", "", visit);
    visitMembers(campaign.trigger, "/trigger", "/trigger", visit);
    visitMembers(campaign.body, "/body", "/body", visit);
    visitMembers(campaign.style, "/template", "/template", visit);
}

std::vector<ShownText> shownTexts(const VantixInAppMessagePayload& message) {
    const InAppBody& body = message.body;
    std::vector<ShownText> texts;
    if (!body.title.empty()) texts.push_back({"/body/title", {Role::title, 0}, body.title});
    if (!body.message.empty()) texts.push_back({"/body/message", {Role::message, 0}, body.message});
    auto addAll = [&](const char* list, const char* key, Role role, const auto& elements, auto textOf) {
        for (std::size_t index = 0; index < elements.size() && texts.size() < mostTexts; ++index) {
            const std::string& text = textOf(elements[index]);
            if (!text.empty()) texts.push_back({placeOf(list, index, key), {role, static_cast<int>(index)}, text});
        }
    };
    addAll("/body/ctas", NotificationPayloadKeys::actionText, Role::button, body.ctas,
           [](const InAppCTA& cta) -> const std::string& { return *cta.actionText; });
    addAll("/body/feedbackOptions/options", "", Role::option, body.feedback.options,
           [](const std::string& option) -> const std::string& { return option; });
    return texts;
}

std::string placeOf(std::string_view list, std::size_t index, std::string_view key) {
    std::string place = std::string(list) + "/" + std::to_string(index);
    return key.empty() ? place : place + "/" + std::string(key);
}

std::size_t indexIn(std::string_view place) {
    for (std::size_t at = 0; at + 1 < place.size(); ++at) {
        if (place[at] != '/') continue;
        std::string_view step = place.substr(at + 1, place.find('/', at + 1) - at - 1);
        if (auto index = wholeNumber(step)) return static_cast<std::size_t>(*index);
    }
    return 0;
}

}  // namespace vantix
