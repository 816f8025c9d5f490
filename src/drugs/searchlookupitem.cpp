#include "searchlookupitem.h"
#include "ui_searchlookupitem.h"

#include <QStyle>

namespace {
const QString bar = QStringLiteral(" |");

const QString rowStyle = QStringLiteral(
    "SearchLookupItem QFrame{\n\tbackground-color:  #ffffff;\n}\n\n"
    "SearchLookupItem QFrame[urgent=true]{\nbackground-color: #fad9d4;\n}\n"
    "SearchLookupItem QFrame#frame{background-color: transparent;}\n"
    "SearchLookupItem QLabel#labelName{color: #295c99; font-size: 20px; font-weight: 700; background-color: transparent;}\n"
    "SearchLookupItem QLabel#labelStatus, SearchLookupItem QLabel#labelBox, SearchLookupItem QLabel#labelDose,"
    " SearchLookupItem QLabel#labelForm{color: #707070; font-size: 14px; background-color: transparent;}\n");
} // namespace

SearchLookupItem::SearchLookupItem(const Drug& drug, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::SearchLookupItem)
    , drug(drug)
{
    ui->setupUi(this);
    showTexts();
}

SearchLookupItem::~SearchLookupItem()
{
    delete ui;
}

Drug SearchLookupItem::getDrug() const
{
    return drug;
}

void SearchLookupItem::setDrug(const Drug& shown)
{
    drug = shown;
    showTexts();
    // The pointer that lit this row up has gone with the list it was over.
    if (ui->mainFrame->property("urgent").toBool())
        setUrgent(false);
}

QString SearchLookupItem::containerStyleSheet()
{
    return rowStyle;
}

void SearchLookupItem::showTexts()
{
    ui->labelName->setText(drug.name);
    ui->labelStatus->setText(drug.status);
    ui->labelForm->setText(drug.kind);
    ui->labelDose->setText(doseText(drug));
    ui->labelBox->setText(boxText(drug));
}

void SearchLookupItem::adjustForFirstRow()
{
    ui->mainFrame->layout()->setContentsMargins(9, 29, 9, 9);
}

QString SearchLookupItem::doseText(const Drug& drug)
{
    if (!drug.kind.isEmpty() && !drug.dose.isEmpty())
        return drug.dose + bar;
    return drug.dose;
}

QString SearchLookupItem::boxText(const Drug& drug)
{
    if (!drug.box.isEmpty() && (!drug.dose.isEmpty() || !drug.kind.isEmpty()))
        return drug.box + bar;
    return drug.box;
}

void SearchLookupItem::enterEvent(QEvent* event)
{
    setUrgent(true);
    QWidget::enterEvent(event);
}

void SearchLookupItem::leaveEvent(QEvent* event)
{
    setUrgent(false);
    QWidget::leaveEvent(event);
}

void SearchLookupItem::setUrgent(bool urgent)
{
    // A dynamic property takes effect in the style sheet only after a re-polish.
    ui->mainFrame->setProperty("urgent", urgent);
    ui->mainFrame->style()->unpolish(ui->mainFrame);
    ui->mainFrame->style()->polish(ui->mainFrame);
}
