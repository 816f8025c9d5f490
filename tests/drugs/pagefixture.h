#pragma once

#include "db/drugdatabase.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QStringList>

// A small drug database for the tests of the drug page, written into dir.
//
// Group 100 holds three versions stored in the order 12, 13, 11: the two Apap
// 500 mg packages are substitutes of each other, Apap 1000 mg has none. Drug 31
// stands alone. Group 400 holds 25 drugs "Testowy N" for the limit of the search.
namespace PageFixture {

inline bool createDatabase(const QString& dir, QString* error)
{
    const QString connection = QStringLiteral("page-fixture");
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(QDir(dir).filePath(DrugDatabase::drugDatabaseName));
        if (!db.open()) {
            *error = db.lastError().text();
            return false;
        }
        QStringList statements {
            // vid is no primary key, so a table scan gives the rows in the order written.
            "CREATE TABLE v (vid INTEGER, name TEXT, pid INTEGER, gid INTEGER, kind TEXT, dose TEXT, box TEXT,"
            " company TEXT, prices TEXT, iid TEXT, leaflet TEXT, warns TEXT)",
            "CREATE TABLE g (gid INTEGER, inn TEXT)",
            "CREATE TABLE xp (id INTEGER, name TEXT)",
            "CREATE TABLE ve (vid INTEGER, ekd TEXT)",
            "CREATE TABLE vm (vid INTEGER, mid INTEGER)",
            "CREATE TABLE m (id INTEGER, name TEXT)",
            "CREATE TABLE postac_match (postac TEXT, match_ix INTEGER)",
            "CREATE TABLE xs (id INTEGER, name TEXT, descr TEXT)",
            "CREATE TABLE d (id INTEGER, name TEXT, descr TEXT)",
            "CREATE TABLE x (id INTEGER, descr TEXT)",
            "CREATE TABLE i (id INTEGER, descr TEXT)",
            "CREATE TABLE z (gid INTEGER, caption TEXT, value TEXT)",
            "CREATE TABLE w (id INTEGER, parent_id INTEGER, name TEXT, descr TEXT)",
            "CREATE TABLE food (wid INTEGER)",
            "CREATE TABLE vg (id INTEGER, version_id INTEGER, kind_id INTEGER, date TEXT, path TEXT)",
            "CREATE TABLE gk (id INTEGER, name TEXT, descr TEXT)",
            "CREATE TABLE cfg (key TEXT, val TEXT)",
            "INSERT INTO cfg VALUES ('data_version', '1700000000')",
            "INSERT INTO xp VALUES (1, 'Rx')",
            "INSERT INTO g VALUES (100, 'Paracetamolum')",
            "INSERT INTO g VALUES (300, 'Solum')",
            "INSERT INTO g VALUES (400, 'Testum')",
            "INSERT INTO m VALUES (1, 'Paracetamolum')",
            "INSERT INTO m VALUES (3, 'Solum')",
            "INSERT INTO v VALUES (12, 'Apap 500', 1, 100, 'tabletki', '500 mg', '20 szt.', 'Corvane Pharma',"
            " '-1|15,00|-1|-1', '-1', '', '')",
            "INSERT INTO v VALUES (13, 'Apap 1000', 1, 100, 'tabletki', '1000 mg', '10 szt.', 'Corvane Pharma',"
            " '-1|19,00|-1|-1', '-1', '', '')",
            "INSERT INTO v VALUES (11, 'Apap 500', 1, 100, 'tabletki', '500 mg', '10 szt.', 'Corvane Pharma',"
            " '-1|9,99|-1|-1', '-1', '', '')",
            "INSERT INTO v VALUES (31, 'Solitarin', 1, 300, 'syrop', '5 mg/ml', '1 butelka', 'Solo',"
            " '-1|30,00|-1|-1', '-1', '', '')",
            "INSERT INTO vm VALUES (11, 1)",
            "INSERT INTO vm VALUES (12, 1)",
            "INSERT INTO vm VALUES (13, 1)",
            "INSERT INTO vm VALUES (31, 3)",
            "INSERT INTO ve VALUES (11, '5900000000011')",
            "INSERT INTO ve VALUES (12, '5900000000012')",
            "INSERT INTO ve VALUES (13, '5900000000013')",
            "INSERT INTO ve VALUES (31, '5900000000031')",
        };
        for (int n = 1; n <= 25; ++n) {
            statements << QStringLiteral("INSERT INTO v VALUES (%1, 'Testowy %2', 1, 400, 'kapsułki', '%2 mg',"
                                         " '30 szt.', 'Testfarm', '', '-1', '', '')")
                              .arg(400 + n)
                              .arg(n);
        }
        QSqlQuery query(db);
        for (const QString& statement : qAsConst(statements)) {
            if (!query.exec(statement)) {
                *error = statement + QStringLiteral(": ") + query.lastError().text();
                ok = false;
                break;
            }
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return ok;
}

} // namespace PageFixture
