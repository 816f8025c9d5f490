#pragma once

#include <QWidget>

namespace Ui {
class DrugBaseWidget;
}

class DrugBaseWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugBaseWidget)

public:
    explicit DrugBaseWidget(QWidget* parent = nullptr);
    ~DrugBaseWidget() override;

private:
    Ui::DrugBaseWidget* ui = nullptr;
};
