#pragma once

#include "Platform/Ports/Clock.h"
#include "VantixCore/Network/CurlTransfer.h"

#include <memory>
#include <vector>

namespace vantix {

/// libcurl's loop over the transfers that are under way, and the connections that it keeps alive for them. One thread
/// at a time, except for `wakeUp`.
class CurlMulti {
public:
    CurlMulti();
    ~CurlMulti();

    /// The transfer starts, and must not go before it has ended or was removed.
    void add(CurlTransfer& transfer);
    void remove(CurlTransfer& transfer);

    struct Ended {
        CurlTransfer& transfer;
        /// CURLcode.
        int code;
    };
    /// Does what can be done without waiting. The transfers that ended with it are removed.
    std::vector<Ended> perform();

    /// Waits until there is something to do, or `wakeUp` is called, but no longer than so.
    void wait(Duration atMost);
    /// Ends the wait, or the next one. Any thread.
    void wakeUp();

private:
    struct Release {
        void operator()(void* multi) const;
    };
    std::unique_ptr<void, Release> multi_;
};

}  // namespace vantix
