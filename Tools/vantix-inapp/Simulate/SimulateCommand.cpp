#include "Tools/vantix-inapp/Simulate/SimulateCommand.h"

#include "Tools/vantix-inapp/Backend/Backend.h"
#include "Tools/vantix-inapp/Headless/StateDirectory.h"
#include "Tools/vantix-inapp/Input/Campaign.h"
#include "Tools/vantix-inapp/Simulate/EndOnSignal.h"
#include "Tools/vantix-inapp/Simulate/SimulatorWindow.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace vantix {

namespace {

/// The toolkit would end the process with an abort.
void complainAboutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg) return;
    std::fputs("simulate needs a display, and none can be reached\n", stderr);
    std::fflush(stderr);
    std::_Exit(2);
}

std::unique_ptr<QApplication> makeApplication() {
    static int count = 1;
    static char name[] = "vantix-inapp";
    static char* words[] = {name, nullptr};
    auto before = qInstallMessageHandler(complainAboutDisplay);
    auto application = std::make_unique<QApplication>(count, words);
    qInstallMessageHandler(before);
    return application;
}

/// The one that the first campaign is for.
QString customerOf(const std::vector<Dictionary>& pushes) {
    const std::string* customer = pushes.empty() ? nullptr : pushes.front().text("cuid");
    return customer ? QString::fromStdString(*customer) : "customer";
}

}  // namespace

void simulate(const SimulateArguments& arguments) {
    QStringList files;
    std::vector<Dictionary> pushes;
    for (const std::string& campaign : arguments.campaigns) {
        pushes.push_back(pushOfCampaignFile(campaign));
        files += QFileInfo(QString::fromStdString(campaign)).absoluteFilePath();
    }
    EndOnSignal endOnSignal;
    auto application = makeApplication();
    endOnSignal.start();
    StateDirectory state({});
    Backend backend({}, [](const std::string&) {});

    qt::HostOptions options;
    options.dataDirectory = QString::fromStdString(state.path());
    options.baseUrl = QString::fromStdString(backend.url());
    options.customerId = customerOf(pushes);
    options.appStoreId = "1488";
    SimulatorWindow window(options, files);
    window.show();
    QApplication::exec();
}

}  // namespace vantix
