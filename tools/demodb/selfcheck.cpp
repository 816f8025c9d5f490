#include "selfcheck.h"

#include "advertwriter.h"
#include "demoschema.h"
#include "descriptiontexts.h"
#include "drugcatalogue.h"
#include "pharmacywriter.h"
#include "referenceids.h"
#include "showcasedrugs.h"

#include <QBuffer>
#include <QDate>
#include <QImage>
#include <QImageReader>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

bool isId(const QString& text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

QSet<QString> toSet(const QStringList& list)
{
    return QSet<QString>(list.begin(), list.end());
}

} // namespace

SelfCheck::SelfCheck(const QSqlDatabase& database, const Minimum& minimum)
    : database(database)
    , minimum(minimum)
{
}

bool SelfCheck::run()
{
    problems.clear();
    checkTables();
    checkSizes();
    checkKeys();
    checkEans();
    checkPrices();
    checkTexts();
    checkLeaflets();
    checkDescriptions();
    checkWarnings();
    checkGifDecisions();
    checkAdverts();
    checkPharmacies();
    checkRecipes();
    checkConfiguration();
    checkShowcase();
    return problems.isEmpty();
}

void SelfCheck::expect(bool condition, const QString& problem)
{
    if (!condition)
        problems.append(problem);
}

bool SelfCheck::run(QSqlQuery& query, const QString& statement, const QVariantList& bound)
{
    query.prepare(statement);
    for (int i = 0; i < bound.size(); ++i)
        query.bindValue(i, bound.at(i));
    if (query.exec())
        return true;
    problems.append(statement + QLatin1String(": ") + query.lastError().text());
    return false;
}

QVariant SelfCheck::value(const QString& statement, const QVariantList& bound)
{
    QSqlQuery query(database);
    if (!run(query, statement, bound))
        return {};
    return query.next() ? query.value(0) : QVariant();
}

QStringList SelfCheck::column(const QString& statement, const QVariantList& bound)
{
    QSqlQuery query(database);
    QStringList values;
    if (!run(query, statement, bound))
        return values;
    while (query.next())
        values.append(query.value(0).toString());
    return values;
}

void SelfCheck::checkTables()
{
    for (const DemoSchema::Table& table : DemoSchema::tables()) {
        const int rows = value(QLatin1String("SELECT COUNT(*) FROM ") + table.name).toInt();
        expect(rows > 0, QStringLiteral("table %1 is empty").arg(table.name));
    }
}

void SelfCheck::checkSizes()
{
    const int packages = value(QStringLiteral("SELECT COUNT(*) FROM v")).toInt();
    const int groups = value(QStringLiteral("SELECT COUNT(DISTINCT gid) FROM v")).toInt();
    const int eans = value(QStringLiteral("SELECT COUNT(*) FROM ve")).toInt();
    expect(packages >= minimum.packages, QStringLiteral("%1 packages, %2 wanted").arg(packages).arg(minimum.packages));
    expect(groups >= minimum.groups, QStringLiteral("%1 groups, %2 wanted").arg(groups).arg(minimum.groups));
    expect(eans >= minimum.eans, QStringLiteral("%1 EAN codes, %2 wanted").arg(eans).arg(minimum.eans));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM (SELECT vid FROM ve GROUP BY vid HAVING COUNT(*) > 1)")).toInt()
               > 0,
           QStringLiteral("no package has several EAN codes"));
}

void SelfCheck::checkKeys()
{
    // The program compares keys by their text: a bound text must find the
    // integer key.
    expect(value(QStringLiteral("SELECT COUNT(*) FROM v WHERE v.vid = ?"), {QStringLiteral("100001")}).toInt() == 1,
           QStringLiteral("a bound text does not find v.vid"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM g WHERE g.gid = ?"), {QStringLiteral("1")}).toInt() == 1,
           QStringLiteral("a bound text does not find g.gid"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM i WHERE id = ?"), {QStringLiteral("1")}).toInt() == 1,
           QStringLiteral("a bound text does not find i.id"));

    // Each statement lists the rows whose key dangles; only the showcase's
    // deliberate ones may, and they must be there.
    struct Orphans {
        QString key;
        QString statement;
        QStringList deliberate;
    };
    const QList<Orphans> orphans = {
        {QStringLiteral("v.gid"), QStringLiteral("SELECT vid FROM v WHERE gid NOT IN (SELECT gid FROM g)"),
         {QString::number(ShowcaseDrugs::packageWithoutGroup)}},
        {QStringLiteral("v.pid"), QStringLiteral("SELECT vid FROM v WHERE pid NOT IN (SELECT id FROM xp)"), {}},
        {QStringLiteral("v.iid"), QStringLiteral("SELECT vid FROM v WHERE iid <> -1 AND iid NOT IN (SELECT id FROM i)"),
         {}},
        {QStringLiteral("ve.vid"), QStringLiteral("SELECT vid FROM ve WHERE vid NOT IN (SELECT vid FROM v)"),
         {QString::number(ShowcaseDrugs::vidWithoutPackage)}},
        {QStringLiteral("vm.vid"), QStringLiteral("SELECT vid FROM vm WHERE vid NOT IN (SELECT vid FROM v)"), {}},
        {QStringLiteral("vm.mid"), QStringLiteral("SELECT vid FROM vm WHERE mid NOT IN (SELECT id FROM m)"), {}},
        {QStringLiteral("package without substance"),
         QStringLiteral("SELECT vid FROM v WHERE vid NOT IN (SELECT vid FROM vm)"), {}},
        {QStringLiteral("package without EAN"), QStringLiteral("SELECT vid FROM v WHERE vid NOT IN (SELECT vid FROM ve)"),
         {}},
        {QStringLiteral("z.gid"), QStringLiteral("SELECT DISTINCT gid FROM z WHERE gid NOT IN (SELECT gid FROM g)"), {}},
        {QStringLiteral("vg.version_id"),
         QStringLiteral("SELECT id FROM vg WHERE version_id NOT IN (SELECT vid FROM v)"), {}},
        {QStringLiteral("vg.kind_id"), QStringLiteral("SELECT id FROM vg WHERE kind_id NOT IN (SELECT id FROM gk)"), {}},
        {QStringLiteral("food.wid"), QStringLiteral("SELECT wid FROM food WHERE wid NOT IN (SELECT id FROM w)"), {}},
        {QStringLiteral("opening hours"),
         QStringLiteral("SELECT pharmacy_id FROM pharmacy_open_hours WHERE pharmacy_id NOT IN (SELECT id FROM pharmacy) "
                        "OR type_id NOT IN (SELECT id FROM pharmacy_open_hours_type)"),
         {}},
        {QStringLiteral("rec_connection"),
         QStringLiteral("SELECT id FROM rec_connection WHERE id_rec NOT IN (SELECT id FROM rec_recipe) "
                        "OR id_sub NOT IN (SELECT id FROM rec_substance)"),
         {}},
        {QStringLiteral("gb.gid"), QStringLiteral("SELECT oid FROM gb WHERE gid NOT IN (SELECT gid FROM g)"),
         {QString::number(AdvertWriter::missingGroupBanner)}},
        {QStringLiteral("banner of gb or o_url"),
         QStringLiteral("SELECT oid FROM gb WHERE oid NOT IN (SELECT id FROM o) "
                        "UNION ALL SELECT oid FROM o_url WHERE oid NOT IN (SELECT id FROM o)"),
         {}},
    };
    for (const Orphans& orphan : orphans) {
        const QStringList found = column(orphan.statement);
        expect(found == orphan.deliberate, QStringLiteral("dangling key %1: rows %2, only %3 wanted")
                                               .arg(orphan.key, found.mid(0, 20).join(QLatin1Char(',')),
                                                    orphan.deliberate.join(QLatin1Char(','))));
    }
}

void SelfCheck::checkEans()
{
    const QStringList codes = column(QStringLiteral("SELECT ekd FROM ve"));
    QSet<QString> seen;
    for (const QString& code : codes) {
        bool digits = code.size() == 13 && code.startsWith(QLatin1String("590"));
        for (const QChar c : code)
            digits = digits && c.isDigit();
        expect(digits && DrugCatalogue::ean13(code.left(12)) == code, QStringLiteral("bad EAN code %1").arg(code));
        expect(!seen.contains(code), QStringLiteral("EAN code %1 twice").arg(code));
        seen.insert(code);
    }
}

void SelfCheck::checkPrices()
{
    QSqlQuery query(database);
    query.exec(QStringLiteral("SELECT vid, prices FROM v"));
    const QSet<QString> levels = toSet(column(QStringLiteral("SELECT id FROM xs")));
    const QSet<QString> scopes = toSet(column(QStringLiteral("SELECT id FROM d")));
    const QSet<QString> offLabel = toSet(column(QStringLiteral("SELECT id FROM x")));
    const QSet<QString> fullPriceLevels = toSet(column(QStringLiteral("SELECT id FROM xs WHERE name = '100%'")))
                                              .unite({QStringLiteral("-1")});
    int empty = 0;
    int withoutFullPrice = 0;
    int twoFullPrices = 0;
    bool namedFullPrice = false;
    QSet<QString> payments;
    bool comma = false;
    bool point = false;
    while (query.next()) {
        const QString vid = query.value(0).toString();
        const QString prices = query.value(1).toString();
        if (prices.isEmpty()) {
            ++empty;
            continue;
        }
        const QStringList parts = prices.split(QLatin1Char('|'), Qt::KeepEmptyParts);
        if (parts.size() % 4 != 0) {
            problems.append(QStringLiteral("prices of %1 not in groups of four: %2").arg(vid, prices));
            continue;
        }
        int fullPrices = 0;
        for (int i = 0; i < parts.size(); i += 4) {
            if (fullPriceLevels.contains(parts.at(i))) {
                ++fullPrices;
                const bool fixed = parts.at(i) == QLatin1String("-1") || parts.at(i + 2) == QLatin1String("-1");
                namedFullPrice = namedFullPrice || !fixed;
            }
            const auto known = [](const QSet<QString>& ids, const QString& id) {
                return id == QLatin1String("-1") || ids.contains(id);
            };
            expect(known(levels, parts.at(i)) && known(scopes, parts.at(i + 2)) && known(offLabel, parts.at(i + 3)),
                   QStringLiteral("prices of %1 name a missing key: %2").arg(vid, prices));
            const QString payment = parts.at(i + 1);
            payments.insert(payment);
            comma = comma || payment.contains(QLatin1Char(','));
            point = point || payment.contains(QLatin1Char('.'));
        }
        withoutFullPrice += fullPrices == 0 ? 1 : 0;
        twoFullPrices += fullPrices > 1 ? 1 : 0;
    }
    expect(empty > 0, QStringLiteral("no package with empty prices"));
    expect(withoutFullPrice > 0 && twoFullPrices > 0 && namedFullPrice,
           QStringLiteral("prices lack a package without a \"100%\" row, one with two, or such a row with a scope"));
    expect(comma && point, QStringLiteral("payments lack a comma or a point form"));
    for (const QString& marker : {QStringLiteral("x"), QStringLiteral("X"), QStringLiteral("-"), QStringLiteral(" "),
                                  QString()})
        expect(payments.contains(marker), QStringLiteral("no payment \"%1\"").arg(marker));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM v WHERE prices LIKE '-1|%'")).toInt() > 0,
           QStringLiteral("no full-price group with level -1"));
}

void SelfCheck::checkTexts()
{
    const QStringList levels = column(QStringLiteral("SELECT name FROM xs"));
    for (const QString& name : {QStringLiteral("100%"), QStringLiteral("ryczałt"), QStringLiteral("30%"),
                                QStringLiteral("50%"), QStringLiteral("bezpłatny")})
        expect(levels.contains(name), QStringLiteral("no payment level %1").arg(name));
    const QStringList scopes = column(QStringLiteral("SELECT lower(name) FROM d"));
    expect(!scopes.filter(QStringLiteral("chemioterapia")).isEmpty(), QStringLiteral("no chemotherapy scope"));
    expect(!scopes.filter(QStringLiteral("program lekowy")).isEmpty(), QStringLiteral("no programme scope"));
    expect(!scopes.filter(QStringLiteral("program lekowy")).filter(QStringLiteral("chemioterapia")).isEmpty(),
           QStringLiteral("no scope naming both a programme and chemotherapy"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM d WHERE name LIKE 'Program lekowy%' AND descr LIKE '%.pdf'"))
                   .toInt()
               > 0,
           QStringLiteral("no programme scope with an attachment"));
    // Empty texts are stored as '', with a NULL beside them that must read alike.
    const QList<QPair<QString, QString>> emptyTexts = {{QStringLiteral("v"), QStringLiteral("prices")},
                                                       {QStringLiteral("v"), QStringLiteral("leaflet")},
                                                       {QStringLiteral("v"), QStringLiteral("warns")},
                                                       {QStringLiteral("o"), QStringLiteral("xvalue")}};
    for (const auto& text : emptyTexts) {
        const QString statement = QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2 = '' AND EXISTS (SELECT 1 FROM %1 "
                                                 "WHERE %2 IS NULL)")
                                      .arg(text.first, text.second);
        expect(value(statement).toInt() > 0,
               QStringLiteral("%1.%2 lacks an empty text or a NULL").arg(text.first, text.second));
    }
    const QStringList offLabel = column(QStringLiteral("SELECT descr FROM x"));
    expect(offLabel.contains(QStringLiteral("Brak danych")), QStringLiteral("no off-label \"Brak danych\""));
    expect(offLabel.contains(QStringLiteral("Brak wskazań")), QStringLiteral("no off-label \"Brak wskazań\""));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM v WHERE name LIKE '%''%'")).toInt() > 0,
           QStringLiteral("no name with a quote"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM v WHERE name LIKE '%ż%' OR name LIKE '%ł%'")).toInt() > 0,
           QStringLiteral("no name with Polish letters"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM m WHERE name = 'Prep. złoż.'")).toInt() == 1,
           QStringLiteral("no compound preparation substance"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM v WHERE iid = -1")).toInt() > 0,
           QStringLiteral("no package without indications"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM postac_match a JOIN postac_match b ON a.match_ix = b.match_ix "
                                "WHERE a.postac = 'tabl.' AND b.postac = 'tabl. powl.'"))
                   .toInt()
               == 1,
           QStringLiteral("tablets and coated tablets are not one class"));
}

void SelfCheck::checkLeaflets()
{
    const QStringList leaflets = column(QStringLiteral("SELECT leaflet FROM v"));
    int empty = 0;
    int backSlash = 0;
    for (const QString& leaflet : leaflets) {
        if (leaflet.isEmpty()) {
            ++empty;
            continue;
        }
        // The program turns the seventh character into "/".
        const bool separator = leaflet.size() > 7
            && (leaflet.at(6) == QLatin1Char('\\') || leaflet.at(6) == QLatin1Char('/'));
        expect(separator, QStringLiteral("leaflet path without a separator at index 6: %1").arg(leaflet));
        if (separator && leaflet.at(6) == QLatin1Char('\\'))
            ++backSlash;
    }
    expect(empty > 0 && backSlash > 0, QStringLiteral("leaflets lack an empty or a back-slash path"));
}

void SelfCheck::checkDescriptions()
{
    const QStringList captions = column(QStringLiteral("SELECT DISTINCT caption FROM z"));
    for (const QString& caption : captions)
        expect(DescriptionTexts::titles().contains(caption), QStringLiteral("unknown section title %1").arg(caption));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM g WHERE gid NOT IN (SELECT gid FROM z)")).toInt() > 0,
           QStringLiteral("every group has descriptions"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM z WHERE value NOT LIKE '<%'")).toInt() == 0,
           QStringLiteral("a description is no HTML fragment"));
}

void SelfCheck::checkWarnings()
{
    using namespace ReferenceIds;
    expect(value(QStringLiteral("SELECT COUNT(*) FROM w WHERE NOT (id BETWEEN ? AND ?) AND id NOT IN (?, ?)"),
                 {firstPictogramWarning, lastPictogramWarning, warningNoPictogramChildren, warningNoPictogramFridge})
                   .toInt()
               == 0,
           QStringLiteral("a warning id outside the pictograms and the two without"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM w WHERE id IN (?, ?)"),
                 {warningNoPictogramChildren, warningNoPictogramFridge})
                   .toInt()
               == 2,
           QStringLiteral("the warnings without a pictogram are missing"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM w WHERE parent_id IS NOT NULL")).toInt() > 0,
           QStringLiteral("no warning with a parent"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM (SELECT wid FROM food GROUP BY wid HAVING COUNT(*) > 1)")).toInt()
               > 0,
           QStringLiteral("no food warning listed twice"));

    // The list goes into an IN (...) as it stands: only integers of w.
    const QSet<QString> ids = toSet(column(QStringLiteral("SELECT id FROM w")));
    const QStringList lists = column(QStringLiteral("SELECT warns FROM v"));
    int empty = 0;
    for (const QString& list : lists) {
        if (list.isEmpty()) {
            ++empty;
            continue;
        }
        for (const QString& id : list.split(QLatin1Char(',')))
            expect(isId(id) && ids.contains(id), QStringLiteral("warns list with an unknown id: %1").arg(list));
    }
    expect(empty > 0, QStringLiteral("no package without warnings"));
}

void SelfCheck::checkGifDecisions()
{
    QSqlQuery query(database);
    QSet<QString> vgColumns;
    query.exec(QStringLiteral("PRAGMA table_info(vg)"));
    while (query.next())
        vgColumns.insert(query.value(1).toString());
    query.exec(QStringLiteral("PRAGMA table_info(gk)"));
    while (query.next()) {
        const QString name = query.value(1).toString();
        expect(name == QLatin1String("id") || !vgColumns.contains(name),
               QStringLiteral("column %1 stands in vg and gk").arg(name));
    }
    // The statement of the drug page, with its unqualified names.
    expect(value(QStringLiteral("SELECT COUNT(*) FROM (SELECT vg.id, version_id, date, path, name, descr FROM vg JOIN "
                                "gk ON vg.kind_id = gk.id AND vg.version_id = ? ORDER BY vg.date DESC)"),
                 {QStringLiteral("100001")})
                   .toInt()
               == 2,
           QStringLiteral("GIF decisions of 100001"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM vg WHERE path LIKE '%\\%'")).toInt() > 0
               && value(QStringLiteral("SELECT COUNT(*) FROM vg WHERE path LIKE '%/%'")).toInt() > 0,
           QStringLiteral("GIF paths lack a back-slash or a slash form"));
}

void SelfCheck::checkAdverts()
{
    QSqlQuery query(database);
    query.exec(QStringLiteral("SELECT id, xkey, xvalue FROM o ORDER BY id"));
    bool still = false;
    bool animated = false;
    QStringList unknownTypes;
    QStringList blank;
    while (query.next()) {
        const QString id = query.value(0).toString();
        const QString type = query.value(1).toString();
        const QByteArray data = QByteArray::fromBase64(query.value(2).toByteArray());
        bool readable = false;
        if (type == QLatin1String("banner")) {
            QImage image;
            readable = image.loadFromData(data) && !image.isNull();
            still = still || readable;
        } else if (type == QLatin1String("animated_banner")) {
            QBuffer buffer;
            buffer.setData(data);
            buffer.open(QIODevice::ReadOnly);
            QImageReader reader(&buffer);
            // The reader forgets the format once it has read to the end.
            const bool gif = reader.format() == "gif";
            int frames = 0;
            QImage frame;
            while (reader.read(&frame))
                ++frames;
            readable = gif && frames > 1;
            animated = animated || readable;
        } else {
            unknownTypes.append(id);
            continue;
        }
        if (!readable)
            blank.append(id);
    }
    expect(still, QStringLiteral("no readable still banner"));
    expect(animated, QStringLiteral("no readable animated banner"));
    expect(unknownTypes == QStringList{QString::number(AdvertWriter::unknownTypeBanner)},
           QStringLiteral("banners of an unknown type: %1").arg(unknownTypes.join(QLatin1Char(','))));
    expect(blank == QStringList{QString::number(AdvertWriter::emptyBanner), QString::number(AdvertWriter::nullBanner)},
           QStringLiteral("banners without a readable picture: %1").arg(blank.join(QLatin1Char(','))));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM o WHERE id NOT IN (SELECT oid FROM o_url) AND id NOT IN "
                                "(SELECT oid FROM gb)"))
                   .toInt()
               > 0,
           QStringLiteral("no banner without a link"));
}

void SelfCheck::checkPharmacies()
{
    expect(value(QStringLiteral("SELECT COUNT(*) FROM pharmacy_open_hours_type")).toInt() == 7,
           QStringLiteral("not seven day types"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM (SELECT pharmacy_id FROM pharmacy_open_hours GROUP BY "
                                "pharmacy_id HAVING COUNT(DISTINCT type_id) = 7)"))
                   .toInt()
               > 0,
           QStringLiteral("no pharmacy open on all seven days"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM pharmacy WHERE phone LIKE '%;%'")).toInt() > 0,
           QStringLiteral("no pharmacy with several phone numbers"));
    expect(column(QStringLiteral("SELECT id FROM pharmacy WHERE id NOT IN (SELECT pharmacy_id FROM "
                                 "pharmacy_open_hours)"))
               == QStringList{QString::number(PharmacyWriter::pharmacyWithoutHours)},
           QStringLiteral("not exactly one pharmacy without opening hours"));
}

void SelfCheck::checkRecipes()
{
    // The statement of the recipes page: a group lists only drugs that have a
    // recipe with at least one ingredient.
    for (const QString& group : column(QStringLiteral("SELECT id FROM rec_group"))) {
        const int drugs =
            value(QStringLiteral(
                      "SELECT COUNT(*) FROM (SELECT d.id FROM ((((SELECT id, name, id_group, synon, id_group FROM "
                      "rec_drug WHERE id_group=?) as d JOIN rec_recipe r ON d.id = r.id_drug) JOIN rec_connection rc "
                      "ON r.id = rc.id_rec) JOIN rec_substance rs ON rc.id_sub = rs.id) group by d.id)"),
                  {group})
                .toInt();
        expect(drugs > 0, QStringLiteral("recipe group %1 shows no drug").arg(group));
    }
    expect(value(QStringLiteral("SELECT COUNT(*) FROM rec_drug WHERE synon = ''")).toInt() > 0
               && value(QStringLiteral("SELECT COUNT(*) FROM rec_drug WHERE synon <> ''")).toInt() > 0,
           QStringLiteral("recipe drugs lack one with and one without a synonym"));
}

void SelfCheck::checkConfiguration()
{
    bool ok = false;
    value(QStringLiteral("SELECT val FROM cfg WHERE key = 'data_version'")).toString().toLongLong(&ok);
    expect(ok, QStringLiteral("data_version is no Unix time"));
    const QString listDate = value(QStringLiteral("SELECT val FROM cfg WHERE key = 'list_date'")).toString();
    expect(QDate::fromString(listDate, QStringLiteral("yyyy-MM-dd")).isValid(),
           QStringLiteral("list_date is no yyyy-MM-dd date"));
}

// The substitutes statement of the program, with bound values.
QStringList SelfCheck::substitutesOf(const QString& vid)
{
    QSqlQuery drug(database);
    drug.prepare(QStringLiteral("SELECT kind, dose, prices FROM v WHERE vid = ?"));
    drug.bindValue(0, vid);
    if (!drug.exec() || !drug.next())
        return {};
    const QString kind = drug.value(0).toString();
    const QString dose = drug.value(1).toString();
    const QStringList parts = drug.value(2).toString().split(QLatin1Char('|'), Qt::KeepEmptyParts);

    QString statement = QStringLiteral(
        "SELECT v.vid FROM vm vm, v v, m m WHERE vm.vid=v.vid AND vm.mid=m.id AND m.name NOT LIKE 'Prep. złoż.' AND "
        "vm.mid IN (SELECT vm.mid FROM vm WHERE vm.vid=?) AND v.kind IN (SELECT a.postac FROM postac_match a, "
        "postac_match b WHERE a.match_ix=b.match_ix AND b.postac=? UNION SELECT ?) AND v.dose=? AND (1=0");
    QVariantList bound = {vid, kind, kind, dose};
    for (int i = 0; i + 2 < parts.size(); i += 4) {
        statement += QStringLiteral(" OR v.prices LIKE ?");
        bound.append(QString(QStringLiteral("%|%|") + parts.at(i + 2) + QStringLiteral("|%")));
    }
    statement += QStringLiteral(") AND v.vid<>? GROUP BY vm.vid HAVING COUNT(*) = (SELECT COUNT(*) FROM vm WHERE "
                                "vm.vid=?) ORDER BY v.vid");
    bound.append(vid);
    bound.append(vid);
    return column(statement, bound);
}

void SelfCheck::checkShowcase()
{
    // The scan statement of the program: a code whose package or group is
    // missing gives no group, so nothing is shown.
    const QStringList deadVids = {QString::number(ShowcaseDrugs::packageWithoutGroup),
                                  QString::number(ShowcaseDrugs::vidWithoutPackage)};
    for (const ShowcaseDrugs::Fact& fact : ShowcaseDrugs::facts()) {
        expect(value(QStringLiteral("SELECT vid FROM ve WHERE ekd LIKE ?"), {fact.ean}).toString() == fact.vid,
               QStringLiteral("EAN %1 does not lead to %2").arg(fact.ean, fact.vid));
        const QVariant gid = value(QStringLiteral("SELECT g.gid FROM ve LEFT JOIN v ON ve.vid = v.vid LEFT JOIN g ON "
                                                  "g.gid = v.gid WHERE ve.ekd LIKE ? LIMIT 1"),
                                   {fact.ean});
        expect(gid.isNull() == deadVids.contains(fact.vid),
               QStringLiteral("scanning %1 shows %2")
                   .arg(fact.ean, gid.isNull() ? QStringLiteral("nothing") : QStringLiteral("a drug")));
    }

    const QList<QPair<QString, QStringList>> substitutes = {
        {QStringLiteral("100001"), {QStringLiteral("100002"), QStringLiteral("100003"), QStringLiteral("100004")}},
        {QStringLiteral("100002"), {QStringLiteral("100001"), QStringLiteral("100003"), QStringLiteral("100004")}},
        {QStringLiteral("100005"), {}},
        {QStringLiteral("100007"), {}},
        {QStringLiteral("100010"), {}},
        {QStringLiteral("100020"), {QStringLiteral("100021")}},
        {QStringLiteral("100022"), {QStringLiteral("100023")}},
        {QStringLiteral("100030"), {}},
        {QStringLiteral("100031"), {}},
        {QStringLiteral("100051"), {QStringLiteral("100052")}},
        {QStringLiteral("100060"), {QStringLiteral("100061"), QStringLiteral("100062")}},
        {QStringLiteral("100070"), {}},
        {QStringLiteral("100080"),
         {QStringLiteral("100081"), QStringLiteral("100082"), QStringLiteral("100083"), QStringLiteral("100084")}},
        {QStringLiteral("100085"), {QStringLiteral("100086")}},
        {QStringLiteral("100086"), {}},
        {QStringLiteral("100090"), {QStringLiteral("100091")}},
        {QStringLiteral("100091"), {QStringLiteral("100090")}},
        {QStringLiteral("100092"), {}},
    };
    for (const auto& entry : substitutes) {
        const QStringList found = substitutesOf(entry.first);
        expect(found == entry.second, QStringLiteral("substitutes of %1: %2 instead of %3")
                                          .arg(entry.first, found.join(QLatin1Char(',')),
                                               entry.second.join(QLatin1Char(','))));
    }

    expect(value(QStringLiteral("SELECT COUNT(*) FROM ve WHERE vid = 100001")).toInt() == 3,
           QStringLiteral("100001 has not three EAN codes"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM vg WHERE version_id = 100050")).toInt() == 3,
           QStringLiteral("100050 has not three GIF decisions"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM z WHERE gid = 1")).toInt()
               == DescriptionTexts::titles().size(),
           QStringLiteral("group 1 lacks some of the section titles"));
    expect(value(QStringLiteral("SELECT COUNT(*) FROM z WHERE gid = 15")).toInt() == 0,
           QStringLiteral("group 15 has descriptions"));

    // The warnings statement of the drug page, for the list of 100001.
    const QString warns = value(QStringLiteral("SELECT warns FROM v WHERE vid = 100001")).toString();
    for (const QString& id : warns.split(QLatin1Char(','))) {
        if (!isId(id)) {
            problems.append(QStringLiteral("warns of 100001 is no list of ids"));
            return;
        }
    }
    QSqlQuery query(database);
    query.exec(QStringLiteral("SELECT w.id, food.wid FROM w LEFT JOIN food ON w.id = food.wid WHERE w.id IN (")
               + warns + QLatin1Char(')'));
    int rows = 0;
    int food = 0;
    while (query.next()) {
        ++rows;
        if (query.value(0) == query.value(1))
            ++food;
    }
    expect(rows == 7 && food == 4, QStringLiteral("warnings of 100001: %1 rows, %2 food").arg(rows).arg(food));
}
