#include "recipegroupitem.h"
#include "ui_recipegroupitem.h"

RecipeGroupItem::RecipeGroupItem(const RecipeGroup& group, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::RecipeGroupItem)
    , group(group)
{
    ui->setupUi(this);
    ui->name->setText(group.name);
    adjustSize();
}

RecipeGroupItem::~RecipeGroupItem()
{
    delete ui;
}
