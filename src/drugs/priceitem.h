#pragma once

#include "db/drugprice.h"

#include <QWidget>

namespace Ui {
class PriceItem;
}

// One refund row as the pharmacist reads it: the level box, its long name,
// what the patient pays and the scope with its attachment or off-label text.
class PriceItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(PriceItem)

public:
    explicit PriceItem(QWidget* parent = nullptr);
    PriceItem(const DrugPrice& price, QWidget* parent);
    ~PriceItem() override;

    void setData(const DrugPrice& price);

    // The texts that setData() shows, apart from the widgets.
    static QString valueText(const QString& payment);
    static QString descriptionText(const DrugPrice& price);

private:
    Ui::PriceItem* ui = nullptr;
};
