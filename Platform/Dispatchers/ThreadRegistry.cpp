#include "Platform/Dispatchers/ThreadRegistry.h"

#include <pthread.h>
#include <string>
#include <utility>

namespace vantix {

void nameThisThread(std::string_view label) {
    constexpr std::size_t longest = 15;
    std::string name(label.substr(label.rfind('.') + 1));
    if (name.size() > longest) name.erase(0, name.size() - longest);
    pthread_setname_np(pthread_self(), name.c_str());
}

void ThreadRegistry::start(std::function<void()> body) {
    std::lock_guard lock(mutex_);
    if (closed_) return;
    std::erase_if(threads_, [](Started& started) {
        if (!*started.hasEnded) return false;
        started.thread.join();
        return true;
    });
    Started& started = threads_.emplace_back();
    try {
        started.thread = std::thread([hasEnded = started.hasEnded, body = std::move(body)]() mutable {
            std::exchange(body, {})();
            *hasEnded = true;
        });
    } catch (...) {
        threads_.pop_back();
        throw;
    }
}

void ThreadRegistry::joinAll() {
    std::vector<Started> threads;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        threads.swap(threads_);
    }
    for (Started& started : threads) started.thread.join();
}

}  // namespace vantix
