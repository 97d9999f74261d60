#include "CampaignCheck/Rules/WrittenFields.h"

#include "CampaignCheck/Text/JSONWalk.h"
#include "Platform/Values/UTF8.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/InAppMessagePayloadKeys.h"

namespace vantix {

namespace {

using Visit = std::function<void(const WrittenField&)>;

const CampaignField* fieldNamed(const std::string& container, std::string_view key) {
    for (const CampaignField* field : fieldsIn(container)) {
        if (field->key() == key) return field;
    }
    return nullptr;
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
    std::vector<ShownText> texts{{"/body/title", "title", body.title}, {"/body/message", "message", body.message}};
    for (std::size_t index = 0; index < body.ctas.size(); ++index) {
        texts.push_back({placeOf("/body/ctas", index, NotificationPayloadKeys::actionText), "button",
                         *body.ctas[index].actionText});
    }
    for (std::size_t index = 0; index < body.feedback.options.size(); ++index) {
        texts.push_back({placeOf("/body/feedbackOptions/options", index), "option", body.feedback.options[index]});
    }
    std::erase_if(texts, [](const ShownText& shown) { return shown.text.empty(); });
    return texts;
}

std::string placeOf(std::string_view list, std::size_t index, std::string_view key) {
    std::string place = std::string(list) + "/" + std::to_string(index);
    return key.empty() ? place : place + "/" + std::string(key);
}

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string shown = repairUTF8(text.substr(0, longest));
    return "\"" + shown + (text.size() > longest ? "…\"" : "\"");
}

}  // namespace vantix
