#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixCore.h"
#include "VantixInAppMessage/Manager/InAppRepoHelper.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"
#include "tests/VantixInAppMessage/Campaign.h"

#include <fstream>
#include <iterator>
#include <map>

using namespace vantix;

namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

std::map<fs::path, std::string> filesBelow(const fs::path& folder) {
    std::map<fs::path, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(folder)] = {std::istreambuf_iterator<char>(stream), {}};
    }
    return files;
}

class TwoInstallationsTest : public CoreFixture<> {
protected:
    TwoInstallationsTest() { server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)}); }

    void installIn(const char* name) {
        Vantix::install({.dataDirectory = folder_.path() / name});
        dispatcher().runUntilIdle();
    }

    /// One thing of each kind that an installation keeps.
    void keepSomething(const std::string& customer) {
        Vantix::getSharedUserDefaults()->setCustomerId(customer);
        InAppRepoHelper::shared()->insert(Campaign{.scope = customer, .cuid = customer}.shared(), {});
        ImageUtility::downloadImage(*URL::parse(server_.url("/picture")), customer, [](const auto&) {}).detach();
        VantixCore::generate(std::make_shared<VantixConfiguration>(), {}, false, {}, {}, Env::dev)
            ->reportBehavioralEvent("of " + customer, {});
        dispatcher().runUntilIdle();
    }

    Texts storedScopes(const std::shared_ptr<InAppRepoHelper>& helper = InAppRepoHelper::shared()) {
        Texts scopes;
        helper->fetchAllInAppMessages([&](const std::vector<InAppMessage>& messages) {
            for (const auto& message : messages) scopes.push_back(*message[InAppMessage::Property::scope]);
        });
        dispatcher().runUntilIdle();
        return scopes;
    }

    LoopbackServer server_;
};

}  // namespace

TEST_F(TwoInstallationsTest, NothingIsKeptInTheEarlierOneAnyMore) {
    installIn("first");
    keepSomething("anna");
    auto earlier = InAppRepoHelper::shared();
    installIn("second");
    auto first = filesBelow(folder_.path() / "first");
    EXPECT_EQ(Vantix::getSharedUserDefaults()->customerId(), std::nullopt);

    keepSomething("berta");
    EXPECT_EQ(storedScopes(), Texts{"berta"});
    EXPECT_EQ(server_.requests().size(), 2U) << "each has images of its own";
    EXPECT_EQ(filesBelow(folder_.path() / "first"), first);
    for (const char* kept : {"settings.json", "InAppMessageModel.sqlite", "images", "reports.sqlite"}) {
        EXPECT_TRUE(fs::exists(folder_.path() / "second" / kept)) << kept;
    }

    EXPECT_EQ(storedScopes(earlier), Texts{"anna"}) << "store and customer are of one installation";
    installIn("first");
    EXPECT_EQ(storedScopes(), Texts{"anna"});
}
