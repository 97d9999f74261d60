#include "CampaignCheck/Rules/WrittenFields.h"

#include "CampaignCheck/Text/JSONWalk.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <algorithm>

namespace vantix {

namespace {

using Visit = std::function<void(const WrittenField&)>;

const CampaignField* fieldNamed(const std::string& container, std::string_view key) {
    auto fields = campaignFields();
    auto found = std::ranges::find_if(
        fields, [&](const CampaignField& field) { return field.key() == key && field.container() == container; });
    return found == fields.end() ? nullptr : &*found;
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
    for (const auto& [key, value] : object) {
        WrittenField written{place + "/" + pointerStep(key), key, value, container, fieldNamed(container, key)};
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
    std::vector<ShownText> texts{{"/body/title", {Role::title, 0}, body.title},
                                 {"/body/message", {Role::message, 0}, body.message}};
    for (std::size_t index = 0; index < body.ctas.size(); ++index) {
        texts.push_back({placeOf("/body/ctas", index, NotificationPayloadKeys::actionText),
                         {Role::button, static_cast<int>(index)},
                         *body.ctas[index].actionText});
    }
    for (std::size_t index = 0; index < body.feedback.options.size(); ++index) {
        texts.push_back({placeOf("/body/feedbackOptions/options", index),
                         {Role::option, static_cast<int>(index)},
                         body.feedback.options[index]});
    }
    std::erase_if(texts, [](const ShownText& shown) { return shown.text.empty(); });
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
