#pragma once

#include "db/records.h"

#include <QWidget>

namespace Ui {
class RecipeDrugItem;
}

// One recipe drug of a group: its name, its synonym in brackets, and the
// ingredients of its recipes.
class RecipeDrugItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(RecipeDrugItem)

public:
    RecipeDrugItem(const RecipeDrug& drug, QWidget* parent);
    ~RecipeDrugItem() override;

    RecipeDrug getDrug() const { return drug; }

private:
    Ui::RecipeDrugItem* ui = nullptr;
    RecipeDrug drug;
};
