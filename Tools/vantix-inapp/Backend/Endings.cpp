#include "Tools/vantix-inapp/Backend/Endings.h"

namespace vantix {

sigset_t blockEndings() {
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);
    return endings;
}

}  // namespace vantix
