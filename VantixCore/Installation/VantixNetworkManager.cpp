#include "VantixCore/VantixNetworkManager.h"

#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/BackEndClient.h"

namespace vantix {

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
