#include "drugsubstituteitem.h"
#include "ui_drugsubstituteitem.h"

#include "drugsubstituteviewmodel.h"
#include "searchlookupitem.h"

#include <algorithm>

DrugSubstituteItem::DrugSubstituteItem(const Drug& drug, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugSubstituteItem)
    , drug(drug)
{
    ui->setupUi(this);

    ui->labelName->setText(drug.name);
    ui->labelStatus->setText(drug.status);
    ui->labelForm->setText(drug.kind);
    ui->labelCompany->setText(drug.company);
    ui->labelPrice->setText(priceText(drug.priceList));

    ui->labelDose->setText(SearchLookupItem::doseText(drug));
    ui->labelBox->setText(SearchLookupItem::boxText(drug));
}

DrugSubstituteItem::~DrugSubstituteItem()
{
    delete ui;
}

QString DrugSubstituteItem::priceText(const QList<DrugPrice>& priceList)
{
    const auto first = std::min_element(priceList.cbegin(), priceList.cend(),
                                        DrugSubstituteViewModel::priceRowLessThan);
    if (first == priceList.cend())
        return QString();

    const QString& payment = first->payment;
    QString text = first->level.name + QLatin1Char(' ') + payment;
    if (!payment.contains(QLatin1String("bez"), Qt::CaseInsensitive) || !payment.contains(QLatin1Char('-')))
        text += QStringLiteral(" zł");
    // Unlike the refund panel, only a capital X marks a missing price here.
    if (payment.contains(QLatin1Char('-')) || payment.contains(QLatin1Char('X')))
        text = QStringLiteral("bd.");
    return text;
}
