#pragma once

#include "db/records.h"

#include <QWidget>

namespace Ui {
class RecipeGroupItem;
}

// One category in the list of the recipes page.
class RecipeGroupItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(RecipeGroupItem)

public:
    RecipeGroupItem(const RecipeGroup& group, QWidget* parent);
    ~RecipeGroupItem() override;

    RecipeGroup getGroup() const { return group; }

private:
    Ui::RecipeGroupItem* ui = nullptr;
    RecipeGroup group;
};
