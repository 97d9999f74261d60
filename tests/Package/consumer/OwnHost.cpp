#include "OwnHost.h"

#include <DeclarativeUI/HostedView.h>
#include <Platform/Dispatchers/ThreadedDispatcher.h>
#include <Platform/Ports/Application.h>
#include <Platform/Ports/FontCatalogue.h>
#include <Platform/Ports/ImageDecoder.h>
#include <Platform/Ports/NotificationCenter.h>
#include <Platform/Ports/Platform.h>
#include <Platform/Ports/TextMeasurer.h>
#include <VantixCore/Vantix.h>
#include <VantixInAppMessage/Core/InAppCampaign.h>
#include <VantixInAppMessage/Core/InAppMessagingCore.h>
#include <VantixInAppMessage/Version.h>
#include <chrono>

static_assert(VANTIX_VERSION >= 10000);

namespace {

/// Every letter is a square.
class SquareLetters final : public vantix::TextMeasurer, public vantix::FontCatalogue {
public:
    vantix::TextLayout layOut(std::string_view text, const vantix::Font& font, double) const override {
        double width = font.size * static_cast<double>(text.size());
        return {{{std::string(text), width}}, {width, font.size}, font.size, font.size, false};
    }
    std::vector<std::string> missingCharacters(std::string_view, const vantix::Font&) const override { return {}; }
    bool contains(std::string_view) const override { return true; }
};

class NoPictures final : public vantix::ImageDecoder {
public:
    vantix::Result<vantix::PixelSize> probe(std::string_view) const override { return vantix::Error{"no picture"}; }
    vantix::Result<vantix::Image> decode(std::string_view, vantix::PixelSize) const override {
        return vantix::Error{"no picture"};
    }
};

/// An application with one scene, which keeps what its window shows.
class Screen final : public vantix::Application {
public:
    std::vector<std::shared_ptr<vantix::Scene>> connectedScenes() const override { return {scene_}; }
    vantix::Image icon() const override { return {}; }

    const std::shared_ptr<vantix::HostedView>& shown() const { return scene_->content; }

private:
    struct NoWindow final : vantix::Window {
        void removeFromSuperview() override {}
    };
    struct OneScene final : vantix::Scene {
        std::shared_ptr<vantix::HostedView> content;

        vantix::SceneActivationState activationState() const override {
            return vantix::SceneActivationState::foregroundActive;
        }
        bool isWindowScene() const override { return true; }
        vantix::SceneTraits traits() const override {
            vantix::SceneTraits traits;
            traits.size = {390, 844};
            return traits;
        }
        std::unique_ptr<vantix::Window> makeWindow(vantix::WindowDescription description) override {
            content = std::dynamic_pointer_cast<vantix::HostedView>(description.rootContent);
            return std::make_unique<NoWindow>();
        }
    };

    std::shared_ptr<OneScene> scene_ = std::make_shared<OneScene>();
};

constexpr const char* campaign = R"({
    "cuid": "c-1", "scope": "s-1", "trigger": {"eventName": "INSTANT"},
    "body": {"type": "POPUP", "title": "Autumn", "message": "Boots", "ctas": [{"actionText": "Open", "action": ""}]}})";

}  // namespace

int showFirstPopup(const char* dataDirectory) {
    auto dispatcher = std::make_shared<vantix::ThreadedDispatcher>();
    auto letters = std::make_shared<SquareLetters>();
    auto screen = std::make_shared<Screen>();
    vantix::Platform::install({dispatcher, std::make_shared<vantix::NotificationCenter>(), screen, letters, letters,
                               std::make_shared<NoPictures>()});
    vantix::VantixHost host;
    host.dataDirectory = dataDirectory;
    host.logSink = [](const vantix::LogLine&) {};
    vantix::Vantix::install(host);
    vantix::Vantix::getSharedUserDefaults()->setCustomerId("c-1");

    auto push = std::make_shared<vantix::NotificationCore>();
    auto messaging = vantix::InAppMessagingCore::create(std::make_shared<vantix::VantixInAppMessageConfiguration>(
                                                            std::make_shared<vantix::VantixConfiguration>(), push),
                                                        vantix::Env::dev, vantix::ApplicationState::active);
    push->receiveSilentPush("inapp", vantix::pushOfCampaign(campaign).value());

    for (int turn = 0; turn < 500 && !screen->shown(); ++turn) dispatcher->runMainQueue(std::chrono::milliseconds(10));
    int elements = 0;
    if (const auto& shown = screen->shown()) {
        shown->setTraits(screen->connectedScenes().front()->traits());
        shown->evaluate(*letters);
        elements = static_cast<int>(shown->elements().size());
        messaging->dismissPresentedInAppMessage();
    }
    messaging = nullptr;
    dispatcher->shutDown();
    vantix::Vantix::uninstall();
    vantix::Platform::uninstall();
    return elements;
}
