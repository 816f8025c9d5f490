#include "marketfiller.h"

#include "demorandom.h"
#include "descriptiontexts.h"
#include "drugcatalogue.h"
#include "referencedata.h"
#include "referenceids.h"
#include "substancepool.h"

namespace {

using namespace ReferenceIds;

struct Company {
    const char* name;
    const char* shortName;
};

const Company companies[] = {
    {"Demofarm Sp. z o.o.", "Demofarm"},
    {"Medivia Demo S.A.", "Medivia"},
    {"Polvita Demo Sp. z o.o.", "Polvita"},
    {"Bałtyk Farmacja Demo Sp. z o.o.", "Bałtyk"},
    {"Vistula Generics Demo Sp. z o.o.", "Vistula"},
    {"Kwiatpharm Demo Sp. j.", "Kwiatpharm"},
    {"Żuraw Pharma Demo S.A.", "Żuraw"},
    {"Nordlek Demo A/S", "Nordlek"},
    {"Sudeten Pharma Demo GmbH", "Sudeten"},
    {"Mazovia Lab Demo Sp. z o.o.", "Mazovia"},
    {"Tatra Generics Demo S.A.", "Tatra"},
    {"Wisłomed Demo Sp. z o.o.", "Wisłomed"},
    {"Laboratoires d'Essai Demo", "Essai"},
};
const int companyCount = int(sizeof(companies) / sizeof(companies[0]));

const QStringList prefixes = {
    QStringLiteral("Al"),  QStringLiteral("Bel"), QStringLiteral("Cor"), QStringLiteral("Dal"), QStringLiteral("Ek"),
    QStringLiteral("Fal"), QStringLiteral("Gem"), QStringLiteral("Hal"), QStringLiteral("Ir"),  QStringLiteral("Kor"),
    QStringLiteral("Lam"), QStringLiteral("Mer"), QStringLiteral("Nor"), QStringLiteral("Ol"),  QStringLiteral("Pra"),
    QStringLiteral("Ret"), QStringLiteral("Sal"), QStringLiteral("Tam"), QStringLiteral("Ul"),  QStringLiteral("Wer"),
    QStringLiteral("Zol"), QStringLiteral("Kwa"), QStringLiteral("Bra"), QStringLiteral("Dre"), QStringLiteral("Fle"),
};
const QStringList middles = {
    QStringLiteral("a"),  QStringLiteral("e"),  QStringLiteral("i"),  QStringLiteral("o"),
    QStringLiteral("u"),  QStringLiteral("ra"), QStringLiteral("li"), QStringLiteral("no"),
    QStringLiteral("ve"), QStringLiteral("ta"), QStringLiteral("mi"), QStringLiteral("ko"),
};
const QStringList endings = {
    QStringLiteral("dex"), QStringLiteral("lin"), QStringLiteral("mar"), QStringLiteral("sol"), QStringLiteral("vit"),
    QStringLiteral("ten"), QStringLiteral("zal"), QStringLiteral("fin"), QStringLiteral("nox"), QStringLiteral("tal"),
    QStringLiteral("mid"), QStringLiteral("par"), QStringLiteral("rex"), QStringLiteral("zin"), QStringLiteral("kan"),
    QStringLiteral("lor"), QStringLiteral("pen"), QStringLiteral("vel"),
};

QString capitalised(const QString& text)
{
    if (text.isEmpty())
        return text;
    return text.left(1).toUpper() + text.mid(1);
}

} // namespace

MarketFiller::MarketFiller(DrugCatalogue& catalogue, DemoRandom& random)
    : catalogue(catalogue)
    , random(random)
{
}

void MarketFiller::fill(int packageTarget, int eanTarget)
{
    while (catalogue.packageCount() < packageTarget)
        addGroup(nextStrength());
    // Packages sold under more than one code make up the rest of the codes.
    while (catalogue.eanCount() < eanTarget && !generatedVids.isEmpty())
        catalogue.addEan(random.pick(generatedVids), catalogue.nextEan(random.between(1, 40)));
}

// Each strength of each substance once, in a shuffled order; only a market
// larger than all of them gets several groups of one strength.
MarketFiller::Strength MarketFiller::nextStrength()
{
    if (strengths.isEmpty()) {
        const QList<SubstancePool::Substance>& substances = SubstancePool::substances();
        for (int i = 0; i < substances.size(); ++i) {
            for (const QString& dose : substances.at(i).doses)
                strengths.append({i, dose});
        }
        for (int i = strengths.size() - 1; i > 0; --i)
            strengths.swapItemsAt(i, random.bounded(i + 1));
    }
    return strengths.takeLast();
}

void MarketFiller::addGroup(const Strength& strength)
{
    const SubstancePool::Substance& substance = SubstancePool::substances().at(strength.substance);
    QStringList substanceNames;
    for (const QString& name : substance.names)
        substanceNames.append(capitalised(name));
    const QString inn = substanceNames.join(QStringLiteral(" + "));
    const QString& dose = strength.dose;

    const int gid = catalogue.addGroup(inn);
    const int iid = random.chance(90) ? catalogue.addIndication(QStringLiteral("<p>") + substance.indication
                                                                + QStringLiteral("</p>"))
                                      : -1;
    if (random.chance(88)) {
        for (const QString& title : DescriptionTexts::titles()) {
            if (random.chance(40))
                catalogue.addDescription(gid, title,
                                         DescriptionTexts::section(title, substance.names.join(QStringLiteral(" + ")),
                                                                   dose, random));
        }
    }

    // One refund decision for the whole group, so that its packages share a
    // scope and stand as each other's substitutes.
    Refund refund;
    if (substance.scope != 0 && random.chance(75)) {
        const QList<int> levels = {lumpSum, lumpSum, thirtyPercent, fiftyPercent, fiftyPercent, freeOfCharge};
        refund.level = random.pick(levels);
        refund.scope = substance.scope;
        refund.offLabel = offLabelNone;
        if (substance.scope == scopeChemotherapy)
            refund.offLabel = random.chance(50) ? offLabelChemoFileC13 : offLabelChemoFileC34;
        else if (random.chance(10))
            refund.offLabel = offLabelNoData;
        else if (random.chance(6))
            refund.offLabel = random.pick(QList<int>{offLabelCancerCare, offLabelTransplant, offLabelNeuropathic});
        refund.senior = random.chance(15);
    }

    QStringList makers;
    const int products = random.between(1, 4);
    for (int product = 0; product < products; ++product) {
        const Brand maker = brand(strength.substance);
        if (makers.contains(maker.name))
            continue;
        makers.append(maker.name);
        const QString kind = random.pick(substance.forms);
        QStringList boxes;
        const int boxCount = random.chance(40) ? 2 : 1;
        for (int b = 0; b < boxCount; ++b) {
            const QString size = box(kind);
            if (!boxes.contains(size))
                boxes.append(size);
        }
        const int basePrice = random.between(299, 15999);
        for (int b = 0; b < boxes.size(); ++b) {
            DrugCatalogue::Package package;
            package.vid = catalogue.newVid();
            package.name = maker.name;
            package.status = substance.status;
            package.gid = gid;
            package.kind = kind;
            package.dose = dose;
            package.box = boxes.at(b);
            package.company = maker.company;
            if (!random.chance(4))
                package.prices = prices(basePrice * (b + 1) + random.between(0, 300), refund);
            package.iid = iid;
            package.leaflet = leaflet(package.vid);
            package.warns = warns();
            package.substances = substanceNames;
            package.eans = QStringList{catalogue.nextEan(random.between(1, 40))};
            if (random.chance(25))
                package.eans.append(catalogue.nextEan(random.between(1, 40)));
            generatedVids.append(catalogue.addPackage(package));
            if (random.chance(2))
                addGifDecisions(package.vid);
        }
    }
}

// The packed refund text: the full price, then the group's refund rows, with
// what the patient pays below the full price.
QString MarketFiller::prices(int fullGrosze, const Refund& refund)
{
    QStringList groups{fullPriceGroup(fullGrosze)};
    if (refund.level == 0)
        return groups.join(QLatin1Char('|'));
    QString payment;
    if (refund.level == lumpSum)
        payment = random.chance(70) ? QStringLiteral("3,20") : money(qMin(fullGrosze, random.between(320, 1500)));
    else if (refund.level == freeOfCharge)
        payment = random.chance(50) ? QStringLiteral("0,00") : QStringLiteral("bezpłatny");
    else
        payment = money(fullGrosze * random.between(refund.level == thirtyPercent ? 30 : 50, 90) / 100);
    groups.append(QStringLiteral("%1|%2|%3|%4").arg(refund.level).arg(payment).arg(refund.scope).arg(refund.offLabel));
    if (refund.senior)
        groups.append(QStringLiteral("%1|0,00|%2|%3").arg(senior).arg(refund.scope).arg(refund.offLabel));
    return groups.join(QLatin1Char('|'));
}

MarketFiller::Brand MarketFiller::brand(int substanceIndex)
{
    QList<Brand>& known = brands[substanceIndex];
    if (!known.isEmpty() && random.chance(50))
        return random.pick(known);
    const Company& company = companies[random.bounded(companyCount)];
    const SubstancePool::Substance& substance = SubstancePool::substances().at(substanceIndex);
    QString name;
    if (substance.names.size() == 1 && substance.names.first() != QStringLiteral("Prep. złoż.") && random.chance(45))
        name = capitalised(substance.names.first()) + QLatin1Char(' ') + QString::fromUtf8(company.shortName);
    else if (substance.names.size() > 1) {
        name = inventedName();
        name += random.chance(50) ? QStringLiteral(" Duo") : QStringLiteral(" Combi");
    }
    else
        name = inventedName();
    known.append({name, QString::fromUtf8(company.name)});
    return known.last();
}

QString MarketFiller::inventedName()
{
    QString name = random.pick(prefixes);
    if (random.chance(60))
        name += random.pick(middles);
    return name + random.pick(endings);
}

QString MarketFiller::money(int grosze)
{
    const QChar separator = random.chance(10) ? QLatin1Char('.') : QLatin1Char(',');
    return QString::number(grosze / 100) + separator + QString::number(grosze % 100).rightJustified(2, QLatin1Char('0'));
}

// The full price row; now and then a marker that the program shows as "bd.".
QString MarketFiller::fullPriceGroup(int grosze)
{
    QString payment = money(grosze);
    const int roll = random.bounded(100);
    if (roll < 2)
        payment = QStringLiteral("x");
    else if (roll < 3)
        payment = QStringLiteral("-");
    else if (roll < 4)
        payment = QStringLiteral(" ");
    else if (roll < 5)
        payment.clear();
    const int level = random.chance(15) ? fullPrice : -1;
    return QStringLiteral("%1|%2|-1|-1").arg(level).arg(payment);
}

QString MarketFiller::box(const QString& kind)
{
    QStringList boxes;
    if (kind.startsWith(QStringLiteral("tabl. musuj")) || kind.startsWith(QStringLiteral("granulat mus")))
        boxes = QStringList{QStringLiteral("20 szt."), QStringLiteral("10 sasz.")};
    else if (kind.startsWith(QStringLiteral("tabl")) || kind.startsWith(QStringLiteral("kaps"))
             || kind.startsWith(QStringLiteral("liofilizat")))
        boxes = QStringList{QStringLiteral("28 szt."), QStringLiteral("30 szt."), QStringLiteral("56 szt."),
                 QStringLiteral("60 szt."), QStringLiteral("90 szt."), QStringLiteral("20 szt. (2 x 10)")};
    else if (kind.startsWith(QStringLiteral("krem")) || kind.startsWith(QStringLiteral("maść")))
        boxes = QStringList{QStringLiteral("1 tuba 15 g"), QStringLiteral("1 tuba 30 g")};
    else if (kind.startsWith(QStringLiteral("krople")))
        boxes = QStringList{QStringLiteral("1 but. 2,5 ml"), QStringLiteral("3 but. 2,5 ml")};
    else if (kind.startsWith(QStringLiteral("aerozol")))
        boxes = QStringList{QStringLiteral("1 poj. 200 dawek"), QStringLiteral("1 but. 10 ml")};
    else if (kind.startsWith(QStringLiteral("proszek do inh")))
        boxes = QStringList{QStringLiteral("1 inhalator 60 dawek"), QStringLiteral("1 inhalator 120 dawek")};
    else if (kind.startsWith(QStringLiteral("roztwór do wstrz")))
        boxes = QStringList{QStringLiteral("10 amp.-strz. 0,4 ml"), QStringLiteral("2 amp.-strz. 0,2 ml")};
    else
        boxes = QStringList{QStringLiteral("1 but. 100 ml"), QStringLiteral("1 but. 150 ml"), QStringLiteral("1 but. 200 ml")};
    return random.pick(boxes);
}

QString MarketFiller::warns()
{
    if (random.chance(15))
        return {};
    static const QList<int> special = ReferenceData::specialWarningIds();
    static const QList<int> food = ReferenceData::foodWarningIds();
    QList<int> ids;
    const int count = random.between(1, 4);
    for (int i = 0; i < count; ++i) {
        const int id = random.chance(75) ? random.pick(special) : random.pick(food);
        if (!ids.contains(id))
            ids.append(id);
    }
    if (random.chance(3))
        ids.append(random.chance(50) ? warningNoPictogramChildren : warningNoPictogramFridge);
    QStringList texts;
    for (int id : ids)
        texts.append(QString::number(id));
    return texts.join(QLatin1Char(','));
}

QString MarketFiller::leaflet(int vid)
{
    const int roll = random.bounded(100);
    if (roll < 12)
        return {};
    const QString separator = roll < 20 ? QStringLiteral("/") : QStringLiteral("\\");
    return QStringLiteral("ulotki") + separator + QString::number(vid) + QStringLiteral(".pdf");
}

void MarketFiller::addGifDecisions(int vid)
{
    const int count = random.chance(70) ? 1 : 2;
    for (int i = 0; i < count; ++i) {
        const int year = random.between(2019, 2025);
        const QString date = QStringLiteral("%1-%2-%3")
                                 .arg(year)
                                 .arg(random.between(1, 12), 2, 10, QLatin1Char('0'))
                                 .arg(random.between(1, 28), 2, 10, QLatin1Char('0'));
        const QString separator = random.chance(70) ? QStringLiteral("\\") : QStringLiteral("/");
        const QString path = QStringLiteral("gif") + separator + QString::number(year) + separator
            + QStringLiteral("decyzja_") + QString::number(++gifSerial) + QStringLiteral(".pdf");
        catalogue.addGifDecision(vid, random.between(gifWithdrawal, gifResumption), date, path);
    }
}
