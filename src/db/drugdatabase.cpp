#include "drugdatabase.h"

#include "databaseconnection.h"
#include "preparedstatement.h"
#include "searchindex.h"
#include "searchindexloader.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QHash>
#include <QThread>
#include <QVariant>

#include <array>
#include <optional>
#include <utility>

namespace DrugDatabase {

namespace {

// Every value that comes from outside (typed text, scanned codes, ids, columns
// read before) is bound to a "?" rather than pasted into the statement, so that
// a quote in it is searched for instead of breaking the statement.

const QString drugColumns = QStringLiteral(
    "SELECT v.vid, v.name, xp.name, g.inn, v.kind, v.dose, v.box, v.company, v.prices, v.iid, g.gid  ");

const QString drugByVidSql = drugColumns + QStringLiteral(
    "                FROM v                 LEFT JOIN g on g.gid = v.gid                LEFT JOIN xp on xp.id = v.pid                WHERE v.vid = ?                LIMIT 1");

const QString drugByEanSql = drugColumns + QStringLiteral(
    "                FROM ve                 LEFT JOIN v on ve.vid = v.vid                LEFT JOIN g on g.gid = v.gid                LEFT JOIN xp on xp.id = v.pid                WHERE ve.ekd LIKE ?                LIMIT 1");

const QString firstDrugOfGroupSql = drugColumns + QStringLiteral(
    "                FROM v                 LEFT JOIN g on g.gid = v.gid                LEFT JOIN xp on xp.id = v.pid                WHERE g.gid = ?                ORDER BY v.vid                LIMIT 1");

const QString searchFromSql = QStringLiteral(
    "                FROM v                 LEFT JOIN g ON g.gid = v.gid                LEFT JOIN xp ON xp.id = v.pid                LEFT JOIN ve ON ve.vid = v.vid                WHERE 1 ");
const QString searchDrugsSql = drugColumns + searchFromSql;
// The same joins, so the same plan and row order, with what the search index keeps.
const QString searchIndexSql = drugColumns + QStringLiteral(", v.rowid, g.rowid, xp.rowid, ve.ekd ") + searchFromSql;
// One row of the search found by the index, by the rowids of its package, group and status.
const QString searchRowSql = drugColumns + QStringLiteral(
    " FROM v LEFT JOIN g ON g.rowid = ? LEFT JOIN xp ON xp.rowid = ? WHERE v.rowid = ? LIMIT 1");

const QString searchWordSql = QStringLiteral(
    " AND ((UPPER(v.name) LIKE UPPER('% ' || ? || '%') OR UPPER(v.name) LIKE UPPER(? || '%')) OR ve.ekd LIKE '%' || ? || '%') ");

const QString drugsOfGroupSql = QStringLiteral(
    "SELECT v.vid, v.name, xp.name, g.inn, v.kind, v.dose, v.box, v.company, v.prices, v.iid, g.gid                 FROM v                 LEFT JOIN g                 on g.gid = v.gid                 LEFT JOIN xp                 on xp.id = v.pid                 WHERE v.gid = ?");

const QString substitutesSql = QStringLiteral(
    "SELECT v.vid FROM vm vm, v v, m m WHERE vm.vid=v.vid AND vm.mid=m.id AND m.name NOT LIKE 'Prep. złoż.' AND vm.mid IN (SELECT vm.mid FROM vm WHERE vm.vid=?) AND v.kind IN (SELECT a.postac FROM postac_match a, postac_match b WHERE a.match_ix=b.match_ix AND b.postac=? UNION SELECT ?) AND v.dose=?");
const QString substitutesScopeSql = QStringLiteral(" OR v.prices LIKE '%|%|' || ? || '|%'");
const QString substitutesEndSql = QStringLiteral(
    " AND v.vid<>? GROUP BY vm.vid HAVING COUNT(*) = (SELECT COUNT(*) FROM vm WHERE vm.vid=?)");

const QString indicationsSql = QStringLiteral("SELECT descr FROM i WHERE id = ?");
const QString dataVersionSql = QStringLiteral("SELECT val FROM cfg WHERE key = 'data_version'");
const QString listDateSql = QStringLiteral("SELECT val FROM cfg WHERE key = 'list_date'");
const QString randomAdvertSql = QStringLiteral(
    "SELECT o.xvalue, o_url.url, g.gid, o.xkey FROM o LEFT JOIN o_url ON o.id = o_url.oid LEFT JOIN gb ON o.id = gb.oid LEFT JOIN g ON gb.gid = g.gid order by RANDOM() limit 1");
const QString leafletSql = QStringLiteral("SELECT leaflet FROM v WHERE vid = ?");
const QString descriptionsSql = QStringLiteral(
    "SELECT z.caption, z.value FROM v LEFT JOIN z ON z.gid = v.gid WHERE v.vid = ?");
const QString warnsSql = QStringLiteral("SELECT v.warns FROM v WHERE v.vid = ?");
const QString warningsSql = QStringLiteral(
    "SELECT w.id, w.parent_id, w.name, w.descr, food.wid FROM w LEFT JOIN food ON w.id = food.wid WHERE w.id IN (");
const QString pharmaciesSql = QStringLiteral(
    "SELECT id, name, street, zip, city, phone, email, www FROM pharmacy WHERE city LIKE '%' || ? || '%' OR street LIKE '%' || ? || '%' ORDER BY city ASC LIMIT ");
const QString openHoursTypesSql = QStringLiteral(
    "SELECT name, name_pl FROM pharmacy_open_hours_type ORDER BY pharmacy_open_hours_type.id ASC");
const QString openHoursSql = QStringLiteral(
    "select type_id, start_hour, end_hour from pharmacy_open_hours where pharmacy_id = ?");
const QString gifDecisionsSql = QStringLiteral(
    "SELECT vg.id, version_id, date, path, name, descr FROM vg JOIN gk ON vg.kind_id = gk.id AND vg.version_id = ? ORDER BY vg.date DESC");
const QString recipeGroupsSql = QStringLiteral("SELECT id AS Id, name as Name from rec_group");
const QString recipeDrugsSql = QStringLiteral(
    "SELECT d.id as Id, d.name as Name, d.id_group as GroupId, d.synon as Synonym, GROUP_CONCAT(rs.name) as Substances, min(rc.id) as ConId FROM ((((SELECT id, name, id_group, synon, id_group FROM rec_drug WHERE id_group=?) as d JOIN rec_recipe r ON d.id = r.id_drug) JOIN rec_connection rc ON r.id = rc.id_rec) JOIN rec_substance rs ON rc.id_sub = rs.id) group by d.id ORDER BY d.name");
const QString searchRecipeDrugsSql = QStringLiteral(
    "SELECT Id, Name, GroupId, Synonym, Substances, ConId FROM (SELECT d.id as Id, d.name as Name, d.id_group as GroupId, d.synon as Synonym, GROUP_CONCAT(rs.name) as Substances, min(rc.id) as ConId FROM ((((SELECT id, name, id_group, synon, id_group FROM rec_drug WHERE id_group=?) as d JOIN rec_recipe r ON d.id = r.id_drug) JOIN rec_connection rc ON r.id = rc.id_rec) JOIN rec_substance rs ON rc.id_sub = rs.id) group by d.id ORDER BY d.name)  WHERE LOWER(Name) LIKE ? || '%' OR LOWER(Synonym) LIKE ? || '%' OR LOWER(Substances) LIKE ? || '%';");
const QString recipesOfDrugSql = QStringLiteral(
    "SELECT rec_recipe.id AS Id, rec_drug.name AS DrugName, rec_recipe.name AS Name, rec_recipe.realization AS Realization, rec_recipe.use_text AS Use, rec_recipe.comments AS Comments FROM rec_recipe, rec_drug WHERE id_drug = rec_drug.id AND rec_drug.id = ?");
const QString substancesOfRecipeSql = QStringLiteral(
    "SELECT rec_substance.id AS Id, rec_substance.name AS Name, rec_substance.effect AS Effect, rec_connection.amount AS Amount, rec_connection.additional as Additional, rec_connection.note as Note FROM rec_substance, rec_connection WHERE rec_substance.id = rec_connection.id_sub AND rec_connection.id_rec = ?");
const QString refundLevelSql = QStringLiteral("SELECT id, name, descr FROM xs WHERE id = ?");
const QString refundScopeSql = QStringLiteral("SELECT id, name, descr FROM d WHERE id = ?");
const QString offLabelSql = QStringLiteral("SELECT id, descr FROM x WHERE id = ?");
const QString createStatisticsSql = QStringLiteral("CREATE TABLE json (url TEXT NOT NULL, data TEXT NOT NULL);");
// A record's values are bound: a phrase or a section title with an apostrophe
// is queued like any other record instead of breaking the statement.
const QString storeStatisticsSql = QStringLiteral("INSERT INTO json VALUES (?, ?)");
const QString overdueRecordSql = QStringLiteral("SELECT url, data FROM json LIMIT 1");
const QString removeOverdueSql = QStringLiteral("DELETE FROM json WHERE data = (SELECT data FROM json LIMIT 1)");
const QString countStatisticsSql = QStringLiteral("SELECT count(*) FROM json");

const QString noRefundId = QStringLiteral("-1");

// Text to bind. Qt binds a null QString as SQL NULL, which would turn a whole
// LIKE pattern into NULL; an empty word must stay an empty text.
QVariant textValue(const QString& text)
{
    return text.isNull() ? QVariant(QStringLiteral("")) : QVariant(text);
}

// An id to bind. An integer goes in as a number, as the literal it once was in
// the statement, so that it meets integer and text keys alike.
QVariant keyValue(const QString& id)
{
    bool isNumber = false;
    const qlonglong number = id.toLongLong(&isNumber);
    return isNumber ? QVariant(number) : textValue(id);
}

// The eleven columns of a drug row, kept until the statement is done: the
// refund look-ups that make the Drug are statements of their own.
using DrugRow = std::array<QString, 11>;

DrugRow readDrugRow(const PreparedStatement& statement)
{
    DrugRow row;
    for (int i = 0; i < int(row.size()); ++i)
        row[i] = statement.text(i);
    return row;
}

QList<DrugRow> readDrugRows(PreparedStatement& statement)
{
    QList<DrugRow> rows;
    while (statement.next())
        rows.append(readDrugRow(statement));
    return rows;
}

QString partAt(const QStringList& parts, int index)
{
    return index < parts.size() ? parts.at(index) : QString();
}

DrugPrice makeDrugPrice(const QString& levelId, const QString& payment, const QString& scopeId,
                        const QString& offLabelId)
{
    DrugPrice price;
    price.payment = payment;
    price.level = refundLevelById(levelId);
    price.scope = refundScopeById(scopeId);
    price.offLabel = offLabelById(offLabelId);
    return price;
}

Drug makeDrug(DrugRow&& row)
{
    Drug drug;
    drug.vid = std::move(row[0]);
    drug.name = std::move(row[1]);
    drug.status = std::move(row[2]);
    drug.inn = std::move(row[3]);
    drug.kind = std::move(row[4]);
    drug.dose = std::move(row[5]);
    drug.box = std::move(row[6]);
    drug.company = std::move(row[7]);
    drug.prices = std::move(row[8]);
    drug.iid = std::move(row[9]);
    drug.gid = std::move(row[10]);
    drug.priceList = refundRows(drug.prices);
    return drug;
}

QList<Drug> makeDrugs(QList<DrugRow>&& rows)
{
    QList<Drug> drugs;
    drugs.reserve(rows.size());
    for (DrugRow& row : rows)
        drugs.append(makeDrug(std::move(row)));
    return drugs;
}

// A single drug row, or an empty Drug; `logEmpty` writes "0 rows" for none.
Drug singleDrug(const QString& sql, const QVariant& value, bool logEmpty)
{
    std::optional<DrugRow> row;
    {
        PreparedStatement statement(drugDatabaseName, sql, {value});
        if (statement.next())
            row = readDrugRow(statement);
    }
    if (!row) {
        if (logEmpty)
            qDebug() << "0 rows";
        return Drug();
    }
    return makeDrug(std::move(*row));
}

QString singleText(const QString& sql, const QVariantList& values = {})
{
    PreparedStatement statement(drugDatabaseName, sql, values);
    return statement.next() ? statement.text(0) : QString();
}

// The warning ids of v.warns, each checked to be an integer before it goes into
// the IN (...) list, so that the column can't carry SQL. No list at all when
// an item isn't an integer.
std::optional<QStringList> warningIds(const QString& warns)
{
    QStringList ids;
    if (warns.trimmed().isEmpty())
        return ids;
    const QStringList items = warns.split(QLatin1Char(','));
    for (const QString& item : items) {
        bool isNumber = false;
        const qlonglong id = item.trimmed().toLongLong(&isNumber);
        if (!isNumber)
            return std::nullopt;
        ids.append(QString::number(id));
    }
    return ids;
}

// The three reference tables of the refund rows, read once per opened database
// on the main thread: every refund group of every drug shown looks into all three.
struct RefundTables {
    bool loaded = false;
    QHash<QString, RefundLevel> levels;
    QHash<QString, RefundScope> scopes;
    QHash<QString, OffLabelIndication> offLabels;
};

RefundTables& refundTablesOfMainThread()
{
    static RefundTables tables;
    return tables;
}

// The key an id finds its row by: as bound, a number as a number.
QString refundKey(const QString& id)
{
    return keyValue(id).toString();
}

// The tables of the opened database, or null off the main thread or when
// they can't be read; the single-row statements answer then.
const RefundTables* refundTables()
{
    const QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread())
        return nullptr;
    RefundTables& tables = refundTablesOfMainThread();
    if (tables.loaded)
        return &tables;
    {
        PreparedStatement statement(drugDatabaseName, QStringLiteral("SELECT id, name, descr FROM xs"));
        if (!statement.isExecuted())
            return nullptr;
        while (statement.next()) {
            const QString key = statement.text(0);
            if (!tables.levels.contains(key))
                tables.levels.insert(key, {statement.text(0), statement.text(1), statement.text(2)});
        }
    }
    {
        PreparedStatement statement(drugDatabaseName, QStringLiteral("SELECT id, name, descr FROM d"));
        if (!statement.isExecuted())
            return nullptr;
        while (statement.next()) {
            const QString key = statement.text(0);
            if (!tables.scopes.contains(key))
                tables.scopes.insert(key, {statement.text(0), statement.text(1), statement.text(2)});
        }
    }
    {
        PreparedStatement statement(drugDatabaseName, QStringLiteral("SELECT id, descr FROM x"));
        if (!statement.isExecuted())
            return nullptr;
        while (statement.next()) {
            const QString key = statement.text(0);
            if (!tables.offLabels.contains(key))
                tables.offLabels.insert(key, {statement.text(0), statement.text(1)});
        }
    }
    tables.loaded = true;
    return &tables;
}

} // namespace

// Empty fields count as positions; a missing part of an incomplete group reads as empty.
QList<DrugPrice> refundRows(const QString& prices)
{
    const QStringList parts = prices.split(QLatin1Char('|'), Qt::KeepEmptyParts, Qt::CaseSensitive);
    QList<DrugPrice> rows;
    for (int i = 0; i < parts.size(); i += 4)
        rows.append(makeDrugPrice(partAt(parts, i), partAt(parts, i + 1), partAt(parts, i + 2),
                                  partAt(parts, i + 3)));
    return rows;
}

QSqlDatabase databaseHandle(const QString& name)
{
    DatabaseConnection& connection = DatabaseConnection::of(name);
    if (!connection.isOpen())
        connection.open();
    if (name == drugDatabaseName && connection.isOpen())
        SearchIndexLoader::start(searchIndexSql);
    return connection.handle();
}

void openDatabase(const QString& name)
{
    DatabaseConnection::of(name).open();
}

void closeDatabase()
{
    SearchIndexLoader::drop();
    refundTablesOfMainThread() = RefundTables();
    DatabaseConnection::of(drugDatabaseName).close();
}

bool waitForSearchIndex()
{
    databaseHandle(drugDatabaseName);
    return SearchIndexLoader::waitUntilReady();
}

Drug drugByVid(const QString& vid)
{
    return singleDrug(drugByVidSql, keyValue(vid), false);
}

Drug drugByEan(const QString& ean)
{
    // The code is matched with LIKE, so "%" and "_" in it stay wildcards.
    return singleDrug(drugByEanSql, textValue(ean), true);
}

Drug firstDrugOfGroup(const QString& gid)
{
    return singleDrug(firstDrugOfGroupSql, keyValue(gid), true);
}

QString indicationsById(const QString& id)
{
    if (id == noRefundId)
        return QString();
    return singleText(indicationsSql, {keyValue(id)});
}

QString dataVersion()
{
    return singleText(dataVersionSql);
}

QString listDate()
{
    return singleText(listDateSql);
}

QString databaseDateText()
{
    const uint seconds = dataVersion().toUInt();
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

Advert randomAdvert()
{
    Advert advert;
    PreparedStatement statement(drugDatabaseName, randomAdvertSql);
    if (statement.next()) {
        advert.data = statement.value(0).toByteArray();
        advert.url = statement.text(1);
        advert.gid = statement.text(2);
        advert.type = statement.text(3);
    }
    return advert;
}

QString leafletPath(const QString& vid)
{
    QString path = singleText(leafletSql, {keyValue(vid)});
    // The publisher writes some separator at index 6; the service wants "/".
    if (path.size() > 6)
        path[6] = QLatin1Char('/');
    return path;
}

QList<Drug> searchDrugs(const QStringList& words, int limit)
{
    if (const std::shared_ptr<const SearchIndex> index = SearchIndexLoader::current()) {
        QList<DrugRow> rows;
        for (const SearchIndex::Row& found : index->search(words, limit)) {
            PreparedStatement statement(drugDatabaseName, searchRowSql,
                                        {found.hasGroup ? QVariant(found.group) : QVariant(),
                                         found.hasStatus ? QVariant(found.status) : QVariant(), found.package});
            if (statement.next())
                rows.append(readDrugRow(statement));
        }
        return makeDrugs(std::move(rows));
    }
    SearchIndexLoader::start(searchIndexSql);

    QString sql = searchDrugsSql;
    QVariantList values;
    values.reserve(words.size() * 3);
    for (const QString& word : words) {
        sql += searchWordSql;
        values << textValue(word) << textValue(word) << textValue(word);
    }
    sql += QStringLiteral(" LIMIT ") + QString::number(limit);

    QList<DrugRow> rows;
    {
        PreparedStatement statement(drugDatabaseName, sql, values);
        rows = readDrugRows(statement);
    }
    return makeDrugs(std::move(rows));
}

QList<Drug> drugsOfGroup(const QString& gid)
{
    QList<DrugRow> rows;
    {
        PreparedStatement statement(drugDatabaseName, drugsOfGroupSql, {keyValue(gid)});
        rows = readDrugRows(statement);
    }
    return makeDrugs(std::move(rows));
}

QList<Drug> substitutesOf(const Drug& drug)
{
    const QVariant vid = keyValue(drug.vid);
    QString sql = substitutesSql;
    QVariantList values{vid, textValue(drug.kind), textValue(drug.kind), textValue(drug.dose)};

    // A candidate must share a refund scope id (the third field of a group) with
    // the drug. An empty prices has no group and so shares none.
    sql += QStringLiteral(" AND (1=0");
    if (!drug.prices.isEmpty()) {
        const QStringList parts = drug.prices.split(QLatin1Char('|'), Qt::KeepEmptyParts, Qt::CaseSensitive);
        for (int i = 0; i < parts.size(); i += 4) {
            sql += substitutesScopeSql;
            values << textValue(partAt(parts, i + 2));
        }
    }
    sql += QStringLiteral(")");
    sql += substitutesEndSql;
    values << vid << vid;

    qDebug().noquote() << sql << values;

    QStringList vids;
    {
        PreparedStatement statement(drugDatabaseName, sql, values);
        while (statement.next())
            vids.append(statement.text(0));
    }
    QList<Drug> substitutes;
    substitutes.reserve(vids.size());
    for (const QString& substituteVid : qAsConst(vids))
        substitutes.append(drugByVid(substituteVid));
    return substitutes;
}

QList<DescriptionSection> descriptionsOf(const QString& vid)
{
    QList<DescriptionSection> sections;
    PreparedStatement statement(drugDatabaseName, descriptionsSql, {keyValue(vid)});
    while (statement.next()) {
        DescriptionSection section;
        section.caption = statement.text(0);
        section.value = statement.text(1);
        // A group without descriptions still gives one row of the left join.
        if (section.caption.isEmpty() && section.value.isEmpty())
            continue;
        sections.append(section);
    }
    return sections;
}

QList<DrugWarning> warningsOf(const QString& vid)
{
    const QString warns = singleText(warnsSql, {keyValue(vid)});
    const std::optional<QStringList> ids = warningIds(warns);
    if (!ids) {
        qDebug().noquote() << "Database error" << QStringLiteral("warning ids that aren't numbers:") << warns;
        return {};
    }

    QList<DrugWarning> warnings;
    const QString sql = warningsSql + ids->join(QLatin1Char(',')) + QStringLiteral(")");
    PreparedStatement statement(drugDatabaseName, sql);
    while (statement.next()) {
        DrugWarning warning;
        warning.id = statement.text(0);
        warning.parentId = statement.text(1);
        warning.name = statement.text(2);
        warning.descr = statement.text(3);
        warning.isFood = statement.value(0) == statement.value(4);
        warnings.append(warning);
    }
    return warnings;
}

QList<Pharmacy> searchPharmacies(const QString& text, int limit)
{
    QList<Pharmacy> pharmacies;
    PreparedStatement statement(drugDatabaseName, pharmaciesSql + QString::number(limit),
                                {textValue(text), textValue(text)});
    while (statement.next()) {
        Pharmacy pharmacy;
        pharmacy.id = statement.number(0);
        pharmacy.name = statement.text(1);
        pharmacy.street = statement.text(2);
        pharmacy.zip = statement.text(3);
        pharmacy.city = statement.text(4);
        pharmacy.phone = statement.text(5);
        pharmacy.email = statement.text(6);
        pharmacy.www = statement.text(7);
        pharmacies.append(pharmacy);
    }
    return pharmacies;
}

QList<PharmacyOpenHoursType> pharmacyOpenHoursTypes()
{
    QList<PharmacyOpenHoursType> types;
    PreparedStatement statement(drugDatabaseName, openHoursTypesSql);
    while (statement.next()) {
        PharmacyOpenHoursType type;
        type.name = statement.text(0);
        type.namePl = statement.text(1);
        types.append(type);
    }
    return types;
}

QList<PharmacyOpenHours> pharmacyOpenHours(int pharmacyId)
{
    QList<PharmacyOpenHours> hours;
    PreparedStatement statement(drugDatabaseName, openHoursSql, {pharmacyId});
    while (statement.next()) {
        PharmacyOpenHours entry;
        entry.typeId = statement.number(0);
        entry.startHour = statement.text(1);
        entry.endHour = statement.text(2);
        hours.append(entry);
    }
    return hours;
}

QList<GifDecision> gifDecisions(const QString& vid)
{
    QList<GifDecision> decisions;
    PreparedStatement statement(drugDatabaseName, gifDecisionsSql, {keyValue(vid)});
    while (statement.next()) {
        GifDecision decision;
        decision.id = statement.number(0);
        decision.versionId = statement.number(1);
        decision.date = statement.text(2);
        decision.path = statement.text(3);
        decision.name = statement.text(4);
        decision.descr = statement.text(5);
        decisions.append(decision);
    }
    return decisions;
}

QList<RecipeGroup> recipeGroups()
{
    QList<RecipeGroup> groups;
    PreparedStatement statement(drugDatabaseName, recipeGroupsSql);
    while (statement.next()) {
        RecipeGroup group;
        group.id = statement.number(0);
        group.name = statement.text(1);
        groups.append(group);
    }
    return groups;
}

namespace {

QList<RecipeDrug> readRecipeDrugs(PreparedStatement& statement)
{
    QList<RecipeDrug> drugs;
    while (statement.next()) {
        RecipeDrug drug;
        drug.id = statement.number(0);
        drug.name = statement.text(1);
        drug.groupId = statement.number(2);
        drug.synonym = statement.text(3);
        drug.substances = statement.text(4);
        drug.conId = statement.number(5);
        drugs.append(drug);
    }
    return drugs;
}

} // namespace

QList<RecipeDrug> recipeDrugsOfGroup(int groupId)
{
    PreparedStatement statement(drugDatabaseName, recipeDrugsSql, {groupId});
    return readRecipeDrugs(statement);
}

QList<RecipeDrug> searchRecipeDrugs(int groupId, const QString& text)
{
    PreparedStatement statement(drugDatabaseName, searchRecipeDrugsSql,
                                {groupId, textValue(text), textValue(text), textValue(text)});
    return readRecipeDrugs(statement);
}

QList<Recipe> recipesOfDrug(int drugId)
{
    QList<Recipe> recipes;
    PreparedStatement statement(drugDatabaseName, recipesOfDrugSql, {drugId});
    while (statement.next()) {
        Recipe recipe;
        recipe.id = statement.number(0);
        recipe.drugName = statement.text(1);
        recipe.name = statement.text(2);
        recipe.realization = statement.text(3);
        recipe.use = statement.text(4);
        recipe.comments = statement.text(5);
        recipes.append(recipe);
    }
    return recipes;
}

QList<RecipeSubstance> substancesOfRecipe(int recipeId)
{
    QList<RecipeSubstance> substances;
    PreparedStatement statement(drugDatabaseName, substancesOfRecipeSql, {recipeId});
    while (statement.next()) {
        RecipeSubstance substance;
        substance.id = statement.number(0);
        substance.name = statement.text(1);
        substance.effect = statement.text(2);
        substance.amount = statement.text(3);
        substance.additional = statement.text(4);
        substance.note = statement.text(5);
        substances.append(substance);
    }
    return substances;
}

RefundLevel refundLevelById(const QString& id)
{
    RefundLevel level;
    if (id == noRefundId) {
        level.id = noRefundId;
        level.name = QStringLiteral("100%");
        level.descr = QStringLiteral("Pełna odpłatność");
        return level;
    }
    // An empty field never names a row; it would have been no statement at all.
    if (id.isEmpty())
        return level;
    // An id the table lacks asks SQL, which may still compare it otherwise ("7.0" = 7).
    if (const RefundTables* tables = refundTables()) {
        const auto found = tables->levels.constFind(refundKey(id));
        if (found != tables->levels.constEnd())
            return *found;
    }
    PreparedStatement statement(drugDatabaseName, refundLevelSql, {keyValue(id)});
    if (statement.next()) {
        level.id = statement.text(0);
        level.name = statement.text(1);
        level.descr = statement.text(2);
    }
    return level;
}

RefundScope refundScopeById(const QString& id)
{
    RefundScope scope;
    if (id == noRefundId) {
        scope.id = noRefundId;
        scope.name = QStringLiteral(
            "Refundacja we wszystkich zarejestrowanych wskazaniach (patrz wskazania wg ChPL).");
        return scope;
    }
    if (id.isEmpty())
        return scope;
    if (const RefundTables* tables = refundTables()) {
        const auto found = tables->scopes.constFind(refundKey(id));
        if (found != tables->scopes.constEnd())
            return *found;
    }
    PreparedStatement statement(drugDatabaseName, refundScopeSql, {keyValue(id)});
    if (statement.next()) {
        scope.id = statement.text(0);
        scope.name = statement.text(1);
        scope.descr = statement.text(2);
    }
    return scope;
}

OffLabelIndication offLabelById(const QString& id)
{
    OffLabelIndication offLabel;
    if (id == noRefundId) {
        offLabel.id = noRefundId;
        offLabel.descr = QStringLiteral("Brak wskazań");
        return offLabel;
    }
    if (id.isEmpty())
        return offLabel;
    if (const RefundTables* tables = refundTables()) {
        const auto found = tables->offLabels.constFind(refundKey(id));
        if (found != tables->offLabels.constEnd())
            return *found;
    }
    PreparedStatement statement(drugDatabaseName, offLabelSql, {keyValue(id)});
    if (statement.next()) {
        offLabel.id = statement.text(0);
        offLabel.descr = statement.text(1);
    }
    return offLabel;
}

// The store is reached from the main thread and from every worker thread, each
// through its own connection (DatabaseConnection::of), with SQLite's busy
// time-out, so that two workers storing at once both land.

void createStatisticsTable()
{
    // From the second start on the table exists and the statement fails, which is fine.
    PreparedStatement statement(statisticsDatabaseName, createStatisticsSql);
}

bool storeStatistics(const QString& url, const QString& data)
{
    qDebug() << "storeStatistics";
    PreparedStatement statement(statisticsDatabaseName, storeStatisticsSql, {textValue(url), textValue(data)});
    return statement.changedRows() == 1;
}

QPair<QString, QByteArray> takeOverdueRecord()
{
    QPair<QString, QByteArray> record;
    {
        PreparedStatement statement(statisticsDatabaseName, overdueRecordSql);
        if (statement.next()) {
            record.first = statement.text(0);
            record.second = statement.text(1).toUtf8();
        }
    }
    if (record.first.isEmpty())
        return {};
    // A record is posted only once it has left the store: a removal that fails
    // (another program holding the file past the busy time-out) would otherwise
    // send it now and again at the next tick.
    PreparedStatement remove(statisticsDatabaseName, removeOverdueSql);
    if (remove.changedRows() < 1)
        return {};
    return record;
}

bool isStatisticsEmpty()
{
    PreparedStatement statement(statisticsDatabaseName, countStatisticsSql);
    if (!statement.next())
        return false;
    return statement.number(0) == 0;
}

} // namespace DrugDatabase
