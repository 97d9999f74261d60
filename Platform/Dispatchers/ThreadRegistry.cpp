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
    if (!closed_) threads_.emplace_back(std::move(body));
}

void ThreadRegistry::joinAll() {
    std::vector<std::thread> threads;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        threads.swap(threads_);
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace vantix
