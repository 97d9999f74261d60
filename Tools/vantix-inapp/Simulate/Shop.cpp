#include "Tools/vantix-inapp/Simulate/Shop.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace vantix {

namespace {

struct Product {
    const char* name;
    const char* category;
    double price;
};

constexpr std::array<Product, 16> products{{
    {"Gaustatoppen boots", "boots", 189.95},
    {"Lofoten boots", "boots", 239},
    {"Hardanger tent", "tents", 449},
    {"Finse tent for two", "tents", 599},
    {"Wool jersey", "wool", 89.5},
    {"Wool socks", "wool", 19.5},
    {"Wool cap", "wool", 24.5},
    {"Down jacket", "jackets", 279},
    {"Rain jacket", "jackets", 199},
    {"Day pack", "packs", 79},
    {"Trekking pack", "packs", 229},
    {"Head lamp", "lights", 49},
    {"Stove", "kitchen", 69},
    {"Pot, two litres", "kitchen", 39.5},
    {"Map of Jotunheimen", "maps", 21},
    {"Compass", "maps", 34},
}};

const Product& productAt(int index) { return products[static_cast<std::size_t>(index)]; }

QVariantMap attributes(const Product& product) {
    return {{"name", product.name}, {"category", product.category}, {"price", product.price}};
}

QString inEuro(double price) { return Shop::tr("€ %1").arg(price, 0, 'f', 2); }

QLabel* makeHeading(const QString& text) {
    auto* heading = new QLabel(text);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    heading->setFont(font);
    heading->setWordWrap(true);
    return heading;
}

template <typename Action>
QPushButton* makeButton(const QString& text, Shop* context, Action action) {
    auto* button = new QPushButton(text);
    QObject::connect(button, &QPushButton::clicked, context, action);
    return button;
}

QWidget* makePage(std::initializer_list<QWidget*> parts, bool hasRoomBelow) {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    for (QWidget* part : parts) layout->addWidget(part);
    if (hasRoomBelow) layout->addStretch();
    return page;
}

}  // namespace

Shop::Shop(QWidget* parent)
    : QStackedWidget(parent), productList_(makeProductList()), productPage_(makeProduct()), basketPage_(makeBasket()) {
    for (QLabel* text : {openedLink_, product_, basket_}) text->setWordWrap(true);
    openedLink_->hide();
    for (QWidget* page : {productList_, productPage_, basketPage_}) addWidget(page);
}

void Shop::open(const QUrl& deepLink) {
    openedLink_->setText(tr("A message led to %1").arg(deepLink.toString()));
    openedLink_->show();
    setCurrentWidget(productList_);
}

QWidget* Shop::makeProductList() {
    auto* search = new QLineEdit;
    search->setPlaceholderText(tr("Search"));
    auto* list = new QListWidget;
    list->setStyleSheet("QListWidget::item { padding: 10px }");
    for (const Product& product : products) list->addItem(tr(product.name));
    connect(search, &QLineEdit::returnPressed, this, [this, search] {
        emit eventRaised("search", {{"text", search->text()}});
    });
    connect(search, &QLineEdit::textChanged, list, [list](const QString& text) {
        for (int row = 0; row < list->count(); ++row) {
            list->item(row)->setHidden(!list->item(row)->text().contains(text, Qt::CaseInsensitive));
        }
    });
    connect(list, &QListWidget::itemClicked, this,
            [this, list](QListWidgetItem* item) { showProduct(list->row(item)); });
    auto* toBasket = makeButton(tr("Basket"), this, &Shop::showBasket);
    return makePage({makeHeading(tr("Fjord & Fell")), openedLink_, search, list, toBasket}, false);
}

QWidget* Shop::makeProduct() {
    return makePage(
        {makeHeading(tr("Product")), product_, makeButton(tr("Put into the basket"), this, &Shop::putIntoBasket),
         makeButton(tr("Back"), this, [this] { setCurrentWidget(productList_); })},
        true);
}

QWidget* Shop::makeBasket() {
    return makePage({makeHeading(tr("Basket")), basket_, makeButton(tr("Buy"), this, &Shop::buy),
                     makeButton(tr("Back"), this, [this] { setCurrentWidget(productList_); })},
                    true);
}

void Shop::showProduct(int product) {
    shownProduct_ = product;
    product_->setText(tr(productAt(product).name) + "\n" + inEuro(productAt(product).price));
    setCurrentWidget(productPage_);
    emit eventRaised("product_viewed", attributes(productAt(product)));
}

void Shop::showBasket() {
    basket_->setText(inEuro(total_));
    setCurrentWidget(basketPage_);
}

void Shop::putIntoBasket() {
    total_ += productAt(shownProduct_).price;
    showBasket();
    emit eventRaised("product_added", attributes(productAt(shownProduct_)));
}

void Shop::buy() {
    double total = std::exchange(total_, 0);
    showBasket();
    emit eventRaised("purchase", {{"total", total}});
}

}  // namespace vantix
