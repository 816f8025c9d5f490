#pragma once

#include "db/drug.h"

#include <QWidget>

namespace Ui {
class DrugSubstituteItem;
}

// One row of the tab "Zamienniki".
class DrugSubstituteItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugSubstituteItem)

public:
    DrugSubstituteItem(const Drug& drug, QWidget* parent);
    ~DrugSubstituteItem() override;

    // The text of the price label for a drug's refund rows.
    static QString priceText(const QList<DrugPrice>& priceList);

private:
    Ui::DrugSubstituteItem* ui = nullptr;
    Drug drug;
};
