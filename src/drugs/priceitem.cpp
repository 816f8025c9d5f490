#include "priceitem.h"
#include "ui_priceitem.h"

#include "urls.h"

namespace {

const QString fullPriceLevel = QStringLiteral("100%");
const QString noData = QStringLiteral("Brak danych");
const QString noIndications = QStringLiteral("Brak wskazań");
const QString chemotherapy = QStringLiteral("chemioterapia");
const QString drugProgramme = QStringLiteral("program lekowy");
const QString attachmentPath = QStringLiteral("/mobile/pdf/index.php?f=");
constexpr int minimumBoxWidth = 47;

} // namespace

PriceItem::PriceItem(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::PriceItem)
{
    ui->setupUi(this);
}

PriceItem::PriceItem(const DrugPrice& price, QWidget* parent)
    : PriceItem(parent)
{
    setData(price);
}

PriceItem::~PriceItem()
{
    delete ui;
}

void PriceItem::setData(const DrugPrice& price)
{
    ui->xsName->setText(price.level.name);
    ui->xsDescription->setText(price.level.descr);
    ui->value->setText(valueText(price.payment));
    ui->description->setText(descriptionText(price));

    ui->xsName->adjustSize();
    ui->xsDescription->adjustSize();
    ui->value->adjustSize();
    // The box keeps its level's text whole when the row is short of room.
    ui->frame->setMinimumWidth(qMax(minimumBoxWidth, ui->frame->sizeHint().width()));
    adjustSize();
    // adjustSize() places nothing inside a layout, and a text that didn't change
    // brings no layout pass: the box's label would keep the spot adjustSize gave it.
    ui->frameLayout->invalidate();
    layout()->invalidate();
}

QString PriceItem::valueText(const QString& payment)
{
    QString number = payment;
    number.replace(QLatin1Char(','), QLatin1Char('.'));
    bool isNumber = false;
    number.toDouble(&isNumber);
    // The stored text is shown, not the number: 3,2 stays 3,2 and is not reformatted.
    if (isNumber)
        return payment + QStringLiteral(" zł");

    const QString marker = payment.toLower();
    if (marker == QLatin1String("x") || marker == QLatin1String("-") || marker.isEmpty()
        || marker == QLatin1String(" "))
        return QStringLiteral("bd.");
    return payment;
}

QString PriceItem::descriptionText(const DrugPrice& price)
{
    QString text;
    if (price.level.name == fullPriceLevel)
        return text;

    text += price.scope.name;
    if (price.offLabel.descr == noData)
        return text;

    const QString scopeName = price.scope.name.toLower();
    const bool isProgramme = scopeName.indexOf(drugProgramme) != -1;
    if (isProgramme || scopeName.indexOf(chemotherapy) != -1) {
        const QString fileName = isProgramme ? price.scope.descr : price.offLabel.descr;
        text += QStringLiteral("<br/>Załącznik:") + QStringLiteral("<a href=\"") + attachmentsUrl + attachmentPath
            + fileName + QStringLiteral("\">") + fileName + QStringLiteral("</a>");
    } else if (price.offLabel.descr != noIndications) {
        text += QStringLiteral("<br/>Wskazania pozarejestracyjne:<br/>") + price.offLabel.descr;
    }
    return text;
}
