// Leaves main while a trigger sync and an image download are under way, with status 7. Their answers come, as the
// argument says, "late", when all that is destroyed at exit has been destroyed; "meanwhile"; or "never".

#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <condition_variable>
#include <mutex>
#include <string_view>

using namespace vantix;

namespace {

/// What other threads use until the very end; never destroyed.
struct Surroundings {
    LoopbackServer server;
    std::mutex mutex;
    std::condition_variable changed;
    int answersTaken = 0;
    std::string_view answersCome = "never";

    void takeAnswer() {
        std::lock_guard lock(mutex);
        ++answersTaken;
        changed.notify_all();
    }
};

/// Made before all else that is destroyed at exit, and so destroyed after it.
struct DestroyedLast {
    TemporaryFolder folder;
    Surroundings& surroundings = *new Surroundings;

    ~DestroyedLast() {
        if (surroundings.answersCome != "late") return;
        surroundings.server.release();
        std::unique_lock lock(surroundings.mutex);
        surroundings.changed.wait(lock, [this] { return surroundings.answersTaken == 2; });
    }
};

__attribute__((init_priority(101))) DestroyedLast destroyedLast;

}  // namespace

int main(int, char** arguments) {
    auto& surroundings = destroyedLast.surroundings;
    surroundings.answersCome = arguments[1];
    LoopbackServer& server = surroundings.server;
    server.reply("/mapp/events",
                 {.body = toJSON(Dictionary{{"status", "200"}, {"triggers", List{Campaign{}.push()}}})});
    server.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    server.hold();

    Platform platform;
    platform.dispatcher = std::make_shared<ThreadedDispatcher>();
    platform.notificationCenter = std::make_shared<NotificationCenter>();
    platform.imageDecoder = std::make_shared<FakeImageDecoder>();
    Platform::install(std::move(platform));
    Vantix::install({.dataDirectory = destroyedLast.folder.path(), .logSink = [&](const LogLine& line) {
                         if (line.message.starts_with("Successfully inserted")) surroundings.takeAnswer();
                     }});
    Vantix::getSharedUserDefaults()->setCustomerId("customer");

    auto configuration = std::make_shared<VantixConfiguration>();
    configuration->base = server.url();
    VantixInAppTriggerManager::create(configuration)->syncTriggers({.cuID = "customer"});
    ImageUtility::downloadImage(*URL::parse(server.url("/picture")), "identifier", [&](const auto& bytes) {
        if (bytes) surroundings.takeAnswer();
    }).detach();
    server.waitForRequests(2);
    if (surroundings.answersCome == "meanwhile") server.release();
    return 7;
}
