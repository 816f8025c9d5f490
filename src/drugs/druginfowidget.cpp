#include "druginfowidget.h"
#include "ui_druginfowidget.h"

DrugInfoWidget::DrugInfoWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugInfoWidget)
{
    ui->setupUi(this);
    // Shown only when they apply: a leaflet coming in, no picture at the
    // service, substitutes to go to.
    ui->leafletLabel->hide();
    ui->pushButton->hide();
    ui->pushButton_2->hide();
}

DrugInfoWidget::~DrugInfoWidget()
{
    delete ui;
}
