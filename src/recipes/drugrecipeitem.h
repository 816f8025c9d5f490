#pragma once

#include "db/records.h"

#include <QWidget>

namespace Ui {
class DrugRecipeItem;
}

// One whole recipe under its number: the ingredients, then how it is made,
// used and what to watch, each block left out when the recipe has no text for it.
class DrugRecipeItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugRecipeItem)

public:
    DrugRecipeItem(const Recipe& recipe, int number, QWidget* parent);
    ~DrugRecipeItem() override;

private:
    Ui::DrugRecipeItem* ui = nullptr;
    Recipe recipe;
};
