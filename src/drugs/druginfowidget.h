#pragma once

#include <QWidget>

namespace Ui {
class DrugInfoWidget;
}

// The first tab of the drug page: names, package picture, prices and
// indications of the selected drug.
class DrugInfoWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugInfoWidget)

public:
    explicit DrugInfoWidget(QWidget* parent = nullptr);
    ~DrugInfoWidget() override;

private:
    Ui::DrugInfoWidget* ui = nullptr;
};
