#pragma once

#include "db/records.h"

#include <QWidget>

namespace Ui {
class RecipeSubstanceItem;
}

// One ingredient of a recipe: its name, and at the right its note and amount.
class RecipeSubstanceItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(RecipeSubstanceItem)

public:
    RecipeSubstanceItem(const RecipeSubstance& substance, QWidget* parent);
    ~RecipeSubstanceItem() override;

private:
    Ui::RecipeSubstanceItem* ui = nullptr;
    RecipeSubstance substance;
};
