#include "druginfowidget.h"
#include "ui_druginfowidget.h"

DrugInfoWidget::DrugInfoWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugInfoWidget)
{
    ui->setupUi(this);
}

DrugInfoWidget::~DrugInfoWidget()
{
    delete ui;
}
