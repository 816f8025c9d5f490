#include "drugbasewidget.h"
#include "ui_drugbasewidget.h"

DrugBaseWidget::DrugBaseWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugBaseWidget)
{
    ui->setupUi(this);
}

DrugBaseWidget::~DrugBaseWidget()
{
    delete ui;
}
