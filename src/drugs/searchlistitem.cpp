#include "searchlistitem.h"
#include "ui_searchlistitem.h"

#include "drugs/searchlookupitem.h"

SearchListItem::SearchListItem(const Drug& drug, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::SearchListItem)
    , drug(drug)
{
    ui->setupUi(this);
    setDrug(drug);

    connect(ui->checkBox, &QCheckBox::stateChanged, this, &SearchListItem::onChecked);
    ui->checkBox->hide();
}

SearchListItem::~SearchListItem()
{
    delete ui;
}

void SearchListItem::setDrug(const Drug& shown)
{
    drug = shown;
    ui->labelName->setText(drug.name);
    ui->labelStatus->setText(drug.status);
    ui->labelInn->setText(drug.inn);
    ui->labelForm->setText(drug.kind);
    ui->labelDose->setText(SearchLookupItem::doseText(drug));
    ui->labelBox->setText(SearchLookupItem::boxText(drug));
}

Drug SearchListItem::getDrug() const
{
    return drug;
}

bool SearchListItem::isChecked() const
{
    return checkedState;
}

QLabel* SearchListItem::labelName() const
{
    return ui->labelName;
}

void SearchListItem::onChecked(int state)
{
    checkedState = state == Qt::Checked;
    emit checked(drug.vid, state);
}
