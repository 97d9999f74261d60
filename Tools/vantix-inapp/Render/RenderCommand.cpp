#include "Tools/vantix-inapp/Render/RenderCommand.h"

#include "Platform/Ports/Dispatcher.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/ScreenPicture.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/Campaign.h"
#include "Tools/vantix-inapp/Render/DeviceSheet.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"

#include <algorithm>

namespace vantix {

namespace {

VantixHost silentHost() {
    VantixHost host;
    host.logSink = [](const LogLine&) {};
    return host;
}

void expectShowable(const std::string& campaign, const VantixInAppMessagePayload& message) {
    const auto& types = supportedInAppMessageTypes;
    auto type = message.body.type;
    bool isBanner = type == VantixInAppNotificationType::header || type == VantixInAppNotificationType::footer;
    std::string word(rawValue(type));
    if (std::find(types.begin(), types.end(), type) == types.end()) {
        throw BadInput::at(campaign, 1, "a message of type " + word + " is never shown");
    }
    if (isBanner && message.body.message.empty()) {
        throw BadInput::at(campaign, 1, "a message of type " + word + " without message text is never shown");
    }
}

}  // namespace

void render(const RenderArguments& arguments) {
    Dictionary push = pushOfCampaignFile(arguments.campaign);
    StateDirectory state({});
    auto pace = Pace::makeVirtual();
    Simulation simulation({}, state.path(), pace->dispatcher(), silentHost());

    auto message = VantixInAppMessagePayload::generate(push);
    expectShowable(arguments.campaign, message);
    auto builder = std::make_shared<InAppMessageViewBuilder>(simulation.core().inAppDisplayManager());

    auto pictureOn = [&](const Device& device) {
        SceneTraits traits = device.traits;
        traits.textScale = arguments.textScale;
        simulation.scene().setTraits(traits);
        builder->createInAppWindow(message);
        pace->settle();
        return paintScreen(simulation.scene(), simulation.painter());
    };
    writePicture(arguments.device ? pictureOn(*arguments.device) : paintDeviceSheet(pictureOn, simulation.painter()),
                 arguments.picture);
    builder->tearDown();
}

}  // namespace vantix
