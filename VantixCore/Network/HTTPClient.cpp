#include "VantixCore/Network/HTTPClient.h"

#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/Network/RedirectChain.h"

#include <utility>

namespace vantix {

HTTPClient::HTTPClient(std::shared_ptr<DispatchQueue> queue, std::shared_ptr<const VantixHost> host)
    : host_(std::move(host)),
      transport_(std::make_shared<HTTPTransport>(std::move(queue), host_->maximumConcurrentTransfers)) {}

TransferHandle HTTPClient::send(HTTPRequest request, HTTPCompletion completion) const {
    auto chain = std::make_shared<RedirectChain>(host_, transport_, std::move(completion));
    chain->send(std::move(request), NetworkPolicy::mostRedirects);
    return TransferHandle(whileAlive(std::weak_ptr(chain), [](RedirectChain& alive) { alive.cancel(); }));
}

TransferHandle HTTPClient::refuse(VantixError error, HTTPCompletion completion) const {
    return transport_->refuse(std::move(error), std::move(completion));
}

void HTTPClient::cancelAll() const { transport_->cancelAll(); }

void HTTPClient::setFault(NetworkFault fault) const { transport_->setFault(fault); }

}  // namespace vantix
