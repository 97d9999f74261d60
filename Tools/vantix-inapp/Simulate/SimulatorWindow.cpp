#include "Tools/vantix-inapp/Simulate/SimulatorWindow.h"

#include "Tools/vantix-inapp/Simulate/CampaignList.h"
#include "Tools/vantix-inapp/Simulate/Controls.h"
#include "Tools/vantix-inapp/Simulate/Phone.h"
#include "Tools/vantix-inapp/Simulate/Shop.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

namespace vantix {

namespace {

constexpr QSize usualSize(1240, 940);

QScrollArea* makeScrollable(QWidget* content) {
    auto* area = new QScrollArea;
    area->setWidget(content);
    area->setAlignment(Qt::AlignCenter);
    area->setFrameShape(QFrame::NoFrame);
    return area;
}

QScrollArea* makeColumn(std::initializer_list<QWidget*> groups) {
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    for (QWidget* group : groups) layout->addWidget(group);
    layout->addStretch();
    auto* area = makeScrollable(column);
    area->setWidgetResizable(true);
    area->setMinimumWidth(260);
    return area;
}

}  // namespace

SimulatorWindow::SimulatorWindow(const qt::HostOptions& options, const QStringList& campaigns)
    : host_(std::make_unique<qt::WidgetsHost>(options)) {
    setWindowTitle(tr("In-app messages"));
    log_->follow(*host_);

    auto* shop = new Shop;
    connect(host_.get(), &qt::Host::deepLinkActivated, shop, &Shop::open);
    connect(shop, &Shop::eventRaised, this, [this](const QString& name, const QVariantMap& attributes) {
        log_->addEvent(name, attributes);
        host_->captureEvent(name, attributes);
    });

    auto* phone = new Phone(shop);
    auto* list = new CampaignList(*host_, *log_);
    for (const QString& campaign : campaigns) list->add(campaign);
    auto* controls = makeColumn({list, new Controls(*host_, *phone, options.customerId)});
    // The direction of the phone is tried out, not that of the tool.
    for (QWidget* part : {static_cast<QWidget*>(controls), static_cast<QWidget*>(log_)}) {
        part->setLayoutDirection(Qt::LeftToRight);
    }

    auto* parts = new QSplitter;
    for (QWidget* part :
         {static_cast<QWidget*>(controls), static_cast<QWidget*>(makeScrollable(phone)), static_cast<QWidget*>(log_)}) {
        parts->addWidget(part);
    }
    parts->setLayoutDirection(Qt::LeftToRight);
    parts->setSizes({260, phone->width() + 20, 540});
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(parts);
    resize(usualSize.boundedTo(screen()->availableSize()));
}

SimulatorWindow::~SimulatorWindow() { host_ = nullptr; }

}  // namespace vantix
