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
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string_view>

using namespace vantix;

namespace {

/// What other threads use until the very end; never destroyed.
struct Surroundings {
    explicit Surroundings(std::string_view answers) : answersCome(answers) {}

    std::string_view answersCome;
    std::optional<TemporaryFolder> folder{std::in_place};
    LoopbackServer server;
    std::mutex mutex;
    std::condition_variable changed;
    int answersTaken = 0;

    void takeAnswer() {
        std::lock_guard lock(mutex);
        ++answersTaken;
        changed.notify_all();
    }
    void waitForAnswers(int count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return answersTaken == count; });
    }
};

Surroundings* surroundings = nullptr;

void endLast() {
    if (surroundings->answersCome == "late") surroundings->server.release();
    if (surroundings->answersCome != "never") surroundings->waitForAnswers(4);
    surroundings->folder.reset();
}

/// Registered before any library makes its first object, and so called when all objects have been destroyed.
void registerEnd() { std::atexit(endLast); }
__attribute__((section(".preinit_array"), used)) void (*const beforeAllElse)() = registerEnd;

void installAll() {
    Platform platform;
    platform.dispatcher = std::make_shared<ThreadedDispatcher>();
    platform.notificationCenter = std::make_shared<NotificationCenter>();
    platform.imageDecoder = std::make_shared<FakeImageDecoder>();
    Platform::install(std::move(platform));
    Vantix::install({.dataDirectory = surroundings->folder->path(), .logSink = [](const LogLine& line) {
                         if (line.message.starts_with("Successfully inserted")) surroundings->takeAnswer();
                     }});
    Vantix::getSharedUserDefaults()->setCustomerId("customer");
}

/// A trigger sync and a download, which lead to two answers.
void transfer(const std::string& picture) {
    LoopbackServer& server = surroundings->server;
    auto triggers = toJSON(Dictionary{{"status", "200"}, {"triggers", List{Campaign{}.push()}}});
    server.reply("/mapp/events", {.body = triggers});
    server.reply(picture, {.body = FakeImageDecoder::encode(40, 30)});

    auto configuration = std::make_shared<VantixConfiguration>();
    configuration->base = server.url();
    VantixInAppTriggerManager::create(configuration)->syncTriggers({.cuID = "customer"});
    ImageUtility::downloadImage(*URL::parse(server.url(picture)), picture, [](const auto& bytes) {
        if (bytes) surroundings->takeAnswer();
    }).detach();
}

}  // namespace

int main(int, char** arguments) {
    surroundings = new Surroundings(arguments[1]);
    installAll();
    // Once to the end, so that all is made that is made at its first use.
    transfer("/first");
    surroundings->waitForAnswers(2);

    surroundings->server.hold();
    transfer("/second");
    surroundings->server.waitForRequests(4);
    if (surroundings->answersCome == "meanwhile") surroundings->server.release();
    return 7;
}
