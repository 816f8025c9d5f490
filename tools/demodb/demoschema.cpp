#include "demoschema.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

bool run(QSqlDatabase& database, const QString& statement, QString* error)
{
    QSqlQuery query(database);
    if (query.exec(statement))
        return true;
    if (error)
        *error = statement + QLatin1String(": ") + query.lastError().text();
    return false;
}

} // namespace

const QList<DemoSchema::Table>& DemoSchema::tables()
{
    // Column names of vg and gk must not overlap beyond "id": the GIF statement
    // names version_id, date, path, name and descr without a table.
    static const QList<Table> all = {
        {QStringLiteral("v"),
         {QStringLiteral("vid INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("pid INTEGER"),
          QStringLiteral("gid INTEGER"), QStringLiteral("kind TEXT"), QStringLiteral("dose TEXT"),
          QStringLiteral("box TEXT"), QStringLiteral("company TEXT"), QStringLiteral("prices TEXT"),
          QStringLiteral("iid INTEGER"), QStringLiteral("leaflet TEXT"), QStringLiteral("warns TEXT")}},
        {QStringLiteral("g"), {QStringLiteral("gid INTEGER PRIMARY KEY"), QStringLiteral("inn TEXT")}},
        {QStringLiteral("xp"), {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT")}},
        {QStringLiteral("ve"), {QStringLiteral("vid INTEGER"), QStringLiteral("ekd TEXT")}},
        {QStringLiteral("vm"), {QStringLiteral("vid INTEGER"), QStringLiteral("mid INTEGER")}},
        {QStringLiteral("m"), {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT")}},
        {QStringLiteral("postac_match"), {QStringLiteral("postac TEXT"), QStringLiteral("match_ix INTEGER")}},
        {QStringLiteral("xs"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("descr TEXT")}},
        {QStringLiteral("d"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("descr TEXT")}},
        {QStringLiteral("x"), {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("descr TEXT")}},
        {QStringLiteral("i"), {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("descr TEXT")}},
        {QStringLiteral("z"),
         {QStringLiteral("gid INTEGER"), QStringLiteral("caption TEXT"), QStringLiteral("value TEXT")}},
        {QStringLiteral("w"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("parent_id INTEGER"), QStringLiteral("name TEXT"),
          QStringLiteral("descr TEXT")}},
        {QStringLiteral("food"), {QStringLiteral("wid INTEGER")}},
        {QStringLiteral("vg"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("version_id INTEGER"),
          QStringLiteral("kind_id INTEGER"), QStringLiteral("date TEXT"), QStringLiteral("path TEXT")}},
        {QStringLiteral("gk"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("descr TEXT")}},
        {QStringLiteral("o"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("xkey TEXT"), QStringLiteral("xvalue TEXT")}},
        {QStringLiteral("o_url"), {QStringLiteral("oid INTEGER"), QStringLiteral("url TEXT")}},
        {QStringLiteral("gb"), {QStringLiteral("oid INTEGER"), QStringLiteral("gid INTEGER")}},
        {QStringLiteral("pharmacy"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("street TEXT"),
          QStringLiteral("zip TEXT"), QStringLiteral("city TEXT"), QStringLiteral("phone TEXT"),
          QStringLiteral("email TEXT"), QStringLiteral("www TEXT")}},
        {QStringLiteral("pharmacy_open_hours_type"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("name_pl TEXT")}},
        {QStringLiteral("pharmacy_open_hours"),
         {QStringLiteral("pharmacy_id INTEGER"), QStringLiteral("type_id INTEGER"), QStringLiteral("start_hour TEXT"),
          QStringLiteral("end_hour TEXT")}},
        {QStringLiteral("rec_group"), {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT")}},
        {QStringLiteral("rec_drug"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("id_group INTEGER"),
          QStringLiteral("synon TEXT")}},
        {QStringLiteral("rec_recipe"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("id_drug INTEGER"), QStringLiteral("name TEXT"),
          QStringLiteral("realization TEXT"), QStringLiteral("use_text TEXT"), QStringLiteral("comments TEXT")}},
        {QStringLiteral("rec_substance"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("name TEXT"), QStringLiteral("effect TEXT")}},
        {QStringLiteral("rec_connection"),
         {QStringLiteral("id INTEGER PRIMARY KEY"), QStringLiteral("id_rec INTEGER"), QStringLiteral("id_sub INTEGER"),
          QStringLiteral("amount TEXT"), QStringLiteral("additional TEXT"), QStringLiteral("note TEXT")}},
        {QStringLiteral("cfg"), {QStringLiteral("key TEXT PRIMARY KEY"), QStringLiteral("val TEXT")}},
    };
    return all;
}

QStringList DemoSchema::columnNames(const QString& table)
{
    for (const Table& t : tables()) {
        if (t.name != table)
            continue;
        QStringList names;
        for (const QString& column : t.columns)
            names.append(column.section(QLatin1Char(' '), 0, 0));
        return names;
    }
    return {};
}

bool DemoSchema::create(QSqlDatabase& database, QString* error)
{
    for (const Table& table : tables()) {
        const QString statement = QLatin1String("CREATE TABLE ") + table.name + QLatin1String(" (")
            + table.columns.join(QLatin1String(", ")) + QLatin1Char(')');
        if (!run(database, statement, error))
            return false;
    }
    return true;
}

bool DemoSchema::createIndexes(QSqlDatabase& database, QString* error)
{
    static const QStringList statements = {
        QStringLiteral("CREATE INDEX ve_vid ON ve (vid)"),
        QStringLiteral("CREATE INDEX ve_ekd ON ve (ekd)"),
        QStringLiteral("CREATE INDEX vm_vid ON vm (vid)"),
        QStringLiteral("CREATE INDEX vm_mid ON vm (mid)"),
        QStringLiteral("CREATE INDEX v_gid ON v (gid)"),
        QStringLiteral("CREATE INDEX z_gid ON z (gid)"),
        QStringLiteral("CREATE INDEX vg_version_id ON vg (version_id)"),
        QStringLiteral("CREATE INDEX postac_match_postac ON postac_match (postac)"),
        QStringLiteral("CREATE INDEX pharmacy_open_hours_pharmacy ON pharmacy_open_hours (pharmacy_id)"),
        QStringLiteral("CREATE INDEX rec_drug_group ON rec_drug (id_group)"),
        QStringLiteral("CREATE INDEX rec_recipe_drug ON rec_recipe (id_drug)"),
        QStringLiteral("CREATE INDEX rec_connection_rec ON rec_connection (id_rec)"),
    };
    for (const QString& statement : statements) {
        if (!run(database, statement, error))
            return false;
    }
    return run(database, QStringLiteral("ANALYZE"), error);
}
