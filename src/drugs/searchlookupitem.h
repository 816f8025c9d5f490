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
    // Shows another drug in this row, so that the pop-up reuses its rows.
    void setDrug(const Drug& drug);
    // The first row sits partly under the search line and needs a deeper top margin.
    void adjustForFirstRow();

    // The texts of the dose and box labels: a bar stands only between fields
    // that are there (box | dose | form).
    static QString doseText(const Drug& drug);
    static QString boxText(const Drug& drug);

    // The rows' style, set once on the pop-up that holds them: a sheet per row
    // widget would be parsed and polished twenty times at every keystroke.
    static QString containerStyleSheet();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void setUrgent(bool urgent);
    void showTexts();

    Ui::SearchLookupItem* ui = nullptr;
    Drug drug;
};
