#include "VantixCore/VantixNetworkManager.h"

#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/BackEndClient.h"

#include <utility>

namespace vantix {

TransferHandle VantixNetworkManager::callAPI(const VantixAPIRequestGenerator& request,
                                             std::function<void(Outcome)> completion) const {
    auto answer = [completion = std::move(completion)](BackEndClient::Outcome outcome) {
        if (!outcome) return completion(outcome.error());
        completion(std::shared_ptr<const VantixResponseGenerator>(
            std::make_shared<const BackEndAnswer>(std::move(outcome).value())));
    };
    return Installation::current()->backEnd()->send(request, std::move(answer));
}

std::shared_ptr<const VantixResponseGenerator> VantixNetworkManager::callAPI(
    const VantixAPIRequestGenerator& request) const {
    auto installation = Installation::current();
    auto outcome = installation->backEnd()->sendAndWait(request, *installation->platform()->dispatcher);
    if (!outcome) throw VantixError(outcome.error());
    return std::make_shared<const BackEndAnswer>(std::move(outcome).value());
}

void VantixNetworkManager::cancelAll() { Installation::current()->httpClient()->cancelAll(); }

void VantixNetworkManager::setFault(NetworkFault fault) { Installation::current()->httpClient()->setFault(fault); }

}  // namespace vantix
