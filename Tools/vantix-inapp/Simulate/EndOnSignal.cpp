#include "Tools/vantix-inapp/Simulate/EndOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace vantix {

namespace {

/// Blocked, so that the signals wait to be read.
int openSignals() {
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);
    return signalfd(-1, &endings, SFD_CLOEXEC);
}

}  // namespace

EndOnSignal::EndOnSignal() : file_(openSignals()) {}

EndOnSignal::~EndOnSignal() { close(file_); }

void EndOnSignal::start() {
    auto* notifier = new QSocketNotifier(file_, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

}  // namespace vantix
