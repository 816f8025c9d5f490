#include "recipesubstanceitem.h"
#include "ui_recipesubstanceitem.h"

RecipeSubstanceItem::RecipeSubstanceItem(const RecipeSubstance& substance, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::RecipeSubstanceItem)
    , substance(substance)
{
    ui->setupUi(this);
    ui->name->setText(substance.name);
    if (substance.note.isEmpty())
        ui->note->hide();
    else
        ui->note->setText(substance.note);
    if (substance.amount.isEmpty())
        ui->amount->hide();
    else
        ui->amount->setText(substance.amount);
    adjustSize();
}

RecipeSubstanceItem::~RecipeSubstanceItem()
{
    delete ui;
}
