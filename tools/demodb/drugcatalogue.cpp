#include "drugcatalogue.h"

#include "demoschema.h"
#include "tablewriter.h"

#include <QVariant>

DrugCatalogue::DrugCatalogue(TableWriter& writer)
    : writer(writer)
{
}

void DrugCatalogue::setFirstGeneratedIds(int vid, int gid, int indicationId)
{
    nextVid = vid;
    nextGid = gid;
    nextIndication = indicationId;
}

int DrugCatalogue::addGroup(const QString& inn, int gid)
{
    if (gid == 0)
        gid = nextGid++;
    writer.insert(QStringLiteral("g"), {gid, inn});
    ++groups;
    return gid;
}

int DrugCatalogue::addIndication(const QString& descr, int id)
{
    if (id == 0)
        id = nextIndication++;
    writer.insert(QStringLiteral("i"), {id, descr});
    return id;
}

void DrugCatalogue::addDescription(int gid, const QString& caption, const QString& value)
{
    writer.insert(QStringLiteral("z"), {gid, caption, value});
}

int DrugCatalogue::addPackage(const Package& package)
{
    const int vid = package.vid != 0 ? package.vid : nextVid++;
    QVariantList row = {vid, package.name, package.status, package.gid, package.kind, package.dose,
                        package.box, package.company, package.prices, package.iid, package.leaflet, package.warns};
    if (!package.nullColumns.isEmpty()) {
        const QStringList columns = DemoSchema::columnNames(QStringLiteral("v"));
        for (const QString& column : package.nullColumns) {
            const int index = columns.indexOf(column);
            if (index >= 0)
                row[index] = QVariant();
        }
    }
    writer.insert(QStringLiteral("v"), row);
    ++packages;
    for (const QString& substance : package.substances)
        writer.insert(QStringLiteral("vm"), {vid, substanceId(substance)});
    if (package.eans.isEmpty())
        addEan(vid, nextEan(1));
    for (const QString& ean : package.eans)
        addEan(vid, ean);
    return vid;
}

void DrugCatalogue::addEan(int vid, const QString& ean)
{
    writer.insert(QStringLiteral("ve"), {vid, ean});
    ++eans;
}

void DrugCatalogue::addGifDecision(int vid, int kindId, const QString& date, const QString& path)
{
    writer.insert(QStringLiteral("vg"), {nextGifDecision++, vid, kindId, date, path});
}

QString DrugCatalogue::nextEan(int step)
{
    eanSerial += step < 1 ? 1 : step;
    return ean13(QLatin1String("590") + QString::number(eanSerial).rightJustified(9, QLatin1Char('0')));
}

QString DrugCatalogue::ean13(const QString& twelveDigits)
{
    int sum = 0;
    for (int i = 0; i < 12 && i < twelveDigits.size(); ++i) {
        const int digit = twelveDigits.at(i).digitValue();
        sum += i % 2 == 0 ? digit : digit * 3;
    }
    return twelveDigits + QString::number((10 - sum % 10) % 10);
}

int DrugCatalogue::substanceId(const QString& name)
{
    auto it = substanceIds.constFind(name);
    if (it != substanceIds.constEnd())
        return it.value();
    const int id = substanceIds.size() + 1;
    substanceIds.insert(name, id);
    writer.insert(QStringLiteral("m"), {id, name});
    return id;
}
