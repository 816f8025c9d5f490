#include "recipedrugitem.h"
#include "ui_recipedrugitem.h"

RecipeDrugItem::RecipeDrugItem(const RecipeDrug& drug, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::RecipeDrugItem)
    , drug(drug)
{
    ui->setupUi(this);
    ui->name->setText(drug.name);
    ui->synonym->setText(drug.synonym);
    if (ui->synonym->text().isEmpty())
        ui->synonym->hide();
    else
        ui->synonym->setText(QStringLiteral("(") + ui->synonym->text() + QStringLiteral(")"));
    ui->substances->setText(drug.substances);
    adjustSize();
}

RecipeDrugItem::~RecipeDrugItem()
{
    delete ui;
}
