#pragma once

#include "db/drug.h"

#include <QWidget>

namespace Ui {
class SearchLookupItem;
}

// One row of the search pop-up.
class SearchLookupItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(SearchLookupItem)

public:
    SearchLookupItem(const Drug& drug, QWidget* parent);
    ~SearchLookupItem() override;

    Drug getDrug() const;
    // The first row sits partly under the search line and needs a deeper top margin.
    void adjustForFirstRow();

    // The texts of the dose and box labels: a bar stands only between fields
    // that are there (box | dose | form).
    static QString doseText(const Drug& drug);
    static QString boxText(const Drug& drug);

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void setUrgent(bool urgent);

    Ui::SearchLookupItem* ui = nullptr;
    Drug drug;
};
