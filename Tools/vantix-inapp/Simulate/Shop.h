#pragma once

#include <QLabel>
#include <QStackedWidget>
#include <QUrl>
#include <QVariantMap>

namespace vantix {

/// A small application that raises the events that messages wait for: products to look at and to buy.
class Shop final : public QStackedWidget {
    Q_OBJECT

public:
    explicit Shop(QWidget* parent = nullptr);

    /// Where a button of a message leads.
    void open(const QUrl& deepLink);

signals:
    /// "search", "product_viewed", "product_added", "purchase".
    void eventRaised(const QString& name, const QVariantMap& attributes);

private:
    QWidget* makeProductList();
    QWidget* makeProduct();
    QWidget* makeBasket();
    void showProduct(int product);
    void showBasket();
    void putIntoBasket();
    void buy();

    QLabel* openedLink_ = new QLabel(this);
    QLabel* product_ = new QLabel(this);
    QLabel* basket_ = new QLabel(this);
    QWidget* productList_;
    QWidget* productPage_;
    QWidget* basketPage_;
    int shownProduct_ = 0;
    double total_ = 0;
};

}  // namespace vantix
