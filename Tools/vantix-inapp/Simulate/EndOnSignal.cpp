#include "Tools/vantix-inapp/Simulate/EndOnSignal.h"

#include "Tools/vantix-inapp/Backend/Endings.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <sys/signalfd.h>
#include <unistd.h>

namespace vantix {

namespace {

int openSignals() {
    sigset_t endings = blockEndings();
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
