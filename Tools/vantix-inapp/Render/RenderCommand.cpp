#include "Tools/vantix-inapp/Render/RenderCommand.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Values/ControlCharacters.h"
#include "Platform/Values/FatalError.h"
#include "Tools/vantix-inapp/Headless/Pace.h"
#include "Tools/vantix-inapp/Headless/ScreenPicture.h"
#include "Tools/vantix-inapp/Headless/SilentHost.h"
#include "Tools/vantix-inapp/Headless/Simulation.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/Campaign.h"
#include "Tools/vantix-inapp/Render/CampaignFindings.h"
#include "Tools/vantix-inapp/Render/DeviceSheet.h"
#include "VantixInAppMessage/MVVM/View/InAppMessageViewBuilder.h"
#include "VantixInAppMessage/Manager/InAppDisplayManager.h"

#include <cstdio>

namespace vantix {

bool render(const RenderArguments& arguments) {
    Dictionary push = pushOfCampaignFile(arguments.campaign);
    StateDirectory state({});
    auto pace = Pace::makeVirtual();
    Simulation simulation({}, state.path(), pace->dispatcher(), silentHost());

    auto message = std::make_shared<const VantixInAppMessagePayload>(VantixInAppMessagePayload::generate(push));
    auto findings = campaignFindings(push, *message, arguments.customer, *pace);
    for (const std::string& finding : findings) {
        std::fprintf(stderr, "%s\n", withEscapedControlCharacters(arguments.campaign + ": " + finding).c_str());
    }
    auto builder = std::make_shared<InAppMessageViewBuilder>(simulation.core().inAppDisplayManager());

    auto pictureOn = [&](const Device& device) {
        SceneTraits traits = device.traits;
        traits.textScale = arguments.textScale;
        simulation.scene().setTraits(traits);
        if (!builder->createInAppWindow(message)) fatalError("The scene gives the message no window");
        pace->settle();
        return paintScreen(simulation.scene(), simulation.painter());
    };
    writePicture(arguments.device ? pictureOn(*arguments.device) : paintDeviceSheet(pictureOn, simulation.painter()),
                 arguments.picture);
    builder->tearDown();
    return findings.empty();
}

}  // namespace vantix
