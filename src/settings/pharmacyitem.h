#pragma once

#include "db/records.h"

#include <QWidget>

namespace Ui {
class PharmacyItem;
}

// One result row of the pharmacy look-up: the town over the name and the street.
class PharmacyItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(PharmacyItem)

public:
    PharmacyItem(const Pharmacy& pharmacy, QWidget* parent = nullptr);
    ~PharmacyItem() override;

private:
    Ui::PharmacyItem* ui = nullptr;
};
