#pragma once

#include "db/drug.h"

#include <QWidget>

class QLabel;

namespace Ui {
class SearchListItem;
}

// One row of the drug page's own lists (selected drugs, drug versions).
class SearchListItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(SearchListItem)

public:
    SearchListItem(const Drug& drug, QWidget* parent);
    ~SearchListItem() override;

    // Shows another drug: a row made ahead of time takes the scanned one.
    void setDrug(const Drug& drug);
    Drug getDrug() const;
    bool isChecked() const;
    // The page recolours this label to mark the selected row.
    QLabel* labelName() const;

signals:
    void checked(const QString& vid, int state);

public slots:
    void onChecked(int state);

private:
    Ui::SearchListItem* ui = nullptr;
    Drug drug;
    bool checkedState = false;
};
