// One life of the module in a process of its own, for torture.py: installs the platform, the core library and the
// module, obeys what standard input says line by line, and answers each order on standard output by "ORDER: ANSWER",
// whenever its answer comes; the answer is "yes" or "no" unless said otherwise. An error of the log, or that
// a report has to be sent again, goes out as "log: TEXT". Ends in good order with its input; a life of more than a
// minute is stopped by SIGALRM.
//
// Arguments: the data directory, the back end's address, and orders that are obeyed before anything is installed.
//
//   insert SCOPE SIZE [PATH]   a message with a text of that size, and the back end's picture of that path
//   delete SCOPE               a stored message
//   report SCOPE               is kept
//   resend                     what waits of reports, at once
//   descriptors NUMBER         are left to the module, at most 64
//   sync NAME                  asks the back end for messages
//   image PATH                 is got, and is the right one
//   list                       answers with the scopes of what is stored, each followed by a blank
//   event NAME                 is captured
//   scene STATE                "active", or anything else
//   screen                     answers with the scopes of what is shown
//   turn                       the main thread answers
//   machine FAULT NUMBER       as Machine::fail
//   calls                      answers with Machine::calls
//   record FILE                as Machine::recordIn
//   clock CHANGE               as Machine::setClock

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/Vantix.h"
#include "VantixCore/VantixNetworkManager.h"
#include "VantixInAppMessage/Core/InAppMessagingCore.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "VantixInAppMessage/templates/InAppMessageView.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/FixedTextMeasurer.h"
#include "tests/Torture/Machine.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <mutex>
#include <sstream>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using namespace vantix;

namespace {

using Answer = std::function<void(const std::string&)>;

/// Writes a line, from any thread.
void say(const std::string& order, const std::string& answer) {
    static std::mutex mutex;
    std::lock_guard lock(mutex);
    std::cout << order << ": " << answer << std::endl;
}

/// What a host would want to know.
void sayLine(const LogLine& line) {
    bool isAnError = line.level == LogLevel::error;
    if (!isAnError && !line.message.starts_with("Reports to be sent again")) return;
    std::string text = (line.file + " " + line.function + ": " + line.message).substr(0, 400);
    std::ranges::replace(text, '\n', ' ');
    say("log", text);
}

std::string yesOrNo(bool is) { return is ? "yes" : "no"; }

template <typename... Words>
std::tuple<Words...> wordsOf(const std::string& order) {
    std::tuple<Words...> words;
    std::istringstream stream(order.substr(std::min(order.size(), order.find(' '))));
    std::apply([&](auto&... word) { (stream >> ... >> word); }, words);
    return words;
}

/// The orders to the machine; false for others.
bool obeysMachine(const std::string& order) {
    if (order.starts_with("machine ")) {
        auto [fault, number] = wordsOf<std::string, long>(order);
        Machine::fail(fault, number);
    } else if (order.starts_with("record ")) {
        Machine::recordIn(std::get<0>(wordsOf<std::string>(order)));
    } else if (order.starts_with("clock ")) {
        Machine::setClock(std::get<0>(wordsOf<std::string>(order)));
    } else {
        return false;
    }
    return true;
}

class Module {
public:
    Module(const std::string& dataDirectory, std::string backEnd) : backEnd_(std::move(backEnd)) {
        Platform platform;
        platform.dispatcher = dispatcher_;
        platform.notificationCenter = std::make_shared<NotificationCenter>();
        platform.imageDecoder = std::make_shared<FakeImageDecoder>();
        auto measurer = std::make_shared<FixedTextMeasurer>();
        platform.textMeasurer = measurer;
        scene_ =
            std::make_shared<OffscreenScene>(SceneTraits{.size = {390, 844}, .safeArea = {}}, dispatcher_, measurer);
        platform.application = std::make_shared<OffscreenApplication>(scene_);
        Platform::install(std::move(platform));
        Vantix::install({.dataDirectory = dataDirectory, .logSink = sayLine});
        Vantix::getSharedUserDefaults()->setCustomerId("customer");
        configuration_->base = backEnd_;
        core_ = InAppMessagingCore::create(std::make_shared<VantixInAppMessageConfiguration>(configuration_), Env::dev,
                                           ApplicationState::active);
        reports_ = VantixCore::generate(configuration_, {}, false, {}, {}, Env::dev);
    }
    ~Module() {
        core_->tearDown();
        core_.reset();
        reports_.reset();
        Vantix::endDiskUse();
        VantixNetworkManager::cancelAll();
        dispatcher_->shutDown();
        Vantix::uninstall();
        Platform::uninstall();
    }

    ThreadedDispatcher& dispatcher() { return *dispatcher_; }

    void obey(const std::string& order) {
        static const std::map<std::string, void (Module::*)(const std::string&, const Answer&)> verbs{
            {"insert", &Module::insert},       {"delete", &Module::remove},
            {"report", &Module::report},       {"image", &Module::getImage},
            {"list", &Module::list},           {"event", &Module::capture},
            {"scene", &Module::setScene},      {"sync", &Module::sync},
            {"resend", &Module::resend},       {"descriptors", &Module::leaveDescriptors},
            {"screen", &Module::lookAtScreen}, {"calls", &Module::countCalls}};
        Answer answer = [order](const std::string& text) { say(order, text); };
        auto verb = verbs.find(order.substr(0, order.find(' ')));
        if (verb != verbs.end()) return (this->*verb->second)(order, answer);
        answer(yesOrNo(order == "turn" || obeysMachine(order)));
    }

private:
    void insert(const std::string& order, const Answer& answer) {
        auto [scope, size, path] = wordsOf<std::string, std::size_t, std::string>(order);
        Campaign campaign{.scope = scope, .event = "buy", .message = std::string(size, 'x')};
        if (!path.empty()) campaign.image = backEnd_ + path;
        core_->silentPushListener(campaign.payload(), [answer](bool isStored) { answer(yesOrNo(isStored)); });
    }

    void remove(const std::string& order, const Answer& answer) {
        auto [scope] = wordsOf<std::string>(order);
        core_->inAppMessageQueueManager()->removeMessage(scope, [answer](bool isGone) { answer(yesOrNo(isGone)); });
    }

    void report(const std::string& order, const Answer& answer) {
        Dictionary attributes{{"scope", std::get<0>(wordsOf<std::string>(order))}};
        dispatcher_->utilityQueue().async([reports = reports_, attributes, answer] {
            reports->reportDLREvent(VantixDLREvents::inAppMessageShown, attributes,
                                    [answer](bool isKept) { answer(yesOrNo(isKept)); });
        });
    }

    void resend(const std::string&, const Answer& answer) {
        reports_ = VantixCore::generate(configuration_, {}, false, {}, {}, Env::dev);
        answer("yes");
    }

    void leaveDescriptors(const std::string& order, const Answer& answer) {
        constexpr rlim_t most = 64;
        rlimit limit{most, most};
        ::setrlimit(RLIMIT_NOFILE, &limit);
        for (int descriptor : taken_) ::close(descriptor);
        taken_.clear();
        auto [left] = wordsOf<std::size_t>(order);
        for (int next = ::dup(0); next >= 0; next = ::dup(0)) taken_.push_back(next);
        for (; left > 0 && !taken_.empty(); --left) {
            ::close(taken_.back());
            taken_.pop_back();
        }
        answer("yes");
    }

    void sync(const std::string&, const Answer& answer) {
        VantixInAppTriggerManager::create(configuration_)->syncTriggers({.cuID = "customer"});
        answer("yes");
    }

    void getImage(const std::string& order, const Answer& answer) {
        auto [path] = wordsOf<std::string>(order);
        std::string expected = FakeImageDecoder::encode(40, 30, path);
        ImageUtility::downloadImage(*URL::parse(backEnd_ + path), path, [expected, answer](const auto& bytes) {
            if (!bytes) say("log", bytes.error().localizedDescription);
            answer(yesOrNo(bytes && bytes.value()->starts_with(expected)));
        }).detach();
    }

    void list(const std::string&, const Answer& answer) {
        core_->inAppMessageQueueManager()->fetchAllInAppMessages([answer](const std::vector<InAppMessage>& messages) {
            std::string scopes;
            for (const auto& message : messages) scopes += message[InAppMessage::Property::scope].value_or("?") + " ";
            answer(scopes);
        });
    }

    void capture(const std::string& order, const Answer& answer) {
        Vantix::captureEvent(std::get<0>(wordsOf<std::string>(order)));
        answer("yes");
    }

    void setScene(const std::string& order, const Answer& answer) {
        scene_->setActivationState(order == "scene active" ? SceneActivationState::foregroundActive
                                                           : SceneActivationState::unattached);
        answer("yes");
    }

    void lookAtScreen(const std::string&, const Answer& answer) {
        std::string scopes;
        for (const auto& window : scene_->windows()) {
            auto root = std::dynamic_pointer_cast<HostingController<InAppMessageView>>(window.content);
            scopes += root->rootView().viewModel()->inAppMessage().scope + " ";
        }
        answer(scopes);
    }

    void countCalls(const std::string&, const Answer& answer) { answer(std::to_string(Machine::calls())); }

    std::string backEnd_;
    std::vector<int> taken_;
    std::shared_ptr<VantixConfiguration> configuration_ = std::make_shared<VantixConfiguration>();
    std::shared_ptr<ThreadedDispatcher> dispatcher_ = std::make_shared<ThreadedDispatcher>();
    std::shared_ptr<OffscreenScene> scene_;
    std::shared_ptr<InAppMessagingCore> core_;
    std::shared_ptr<VantixCore> reports_;
};

}  // namespace

int main(int count, char** arguments) {
    ::alarm(60);
    Machine::watch(arguments[1]);
    std::ranges::for_each(arguments + 3, arguments + count, obeysMachine);
    Module module(arguments[1], arguments[2]);
    auto& dispatcher = module.dispatcher();
    bool hasEnded = false;
    std::thread reader([&] {
        for (std::string order; std::getline(std::cin, order);) {
            dispatcher.mainQueue().async([&module, order] { module.obey(order); });
        }
        dispatcher.mainQueue().async([&] { hasEnded = true; });
    });
    while (!hasEnded) dispatcher.runMainQueue(seconds(0.01));
    reader.join();
}
