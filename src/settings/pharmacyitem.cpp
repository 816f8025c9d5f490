#include "pharmacyitem.h"
#include "ui_pharmacyitem.h"

PharmacyItem::PharmacyItem(const Pharmacy& pharmacy, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::PharmacyItem)
{
    ui->setupUi(this);
    ui->cityLabel->setText(pharmacy.city);
    ui->nameLabel->setText(pharmacy.name);
    ui->streetLabel->setText(pharmacy.street);
}

PharmacyItem::~PharmacyItem()
{
    delete ui;
}
