#pragma once

#include <QWidget>

namespace Ui {
class RecipeWidget;
}

class RecipeWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(RecipeWidget)

public:
    explicit RecipeWidget(QWidget* parent = nullptr);
    ~RecipeWidget() override;

private:
    Ui::RecipeWidget* ui = nullptr;
};
