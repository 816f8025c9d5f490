#pragma once

#include "db/drugdatabase.h"
#include "testsupport.h"

#include <QDir>
#include <QString>

// A small drug database for the tests of the drug page, written into dir.
//
// Group 100 holds three versions stored in the order 12, 13, 11: the two Apap
// 500 mg packages are substitutes of each other, Apap 1000 mg has none. Drug 31
// stands alone. Group 400 holds 25 drugs "Testowy N" for the limit of the search.
namespace PageFixture {

inline bool createDatabase(const QString& dir)
{
    // vid is no primary key, so a table scan gives the rows in the order written.
    QString sql = QStringLiteral(R"sql(
CREATE TABLE v (vid INTEGER, name TEXT, pid INTEGER, gid INTEGER, kind TEXT, dose TEXT, box TEXT,
                company TEXT, prices TEXT, iid TEXT, leaflet TEXT, warns TEXT);
CREATE TABLE g (gid INTEGER, inn TEXT);
CREATE TABLE xp (id INTEGER, name TEXT);
CREATE TABLE ve (vid INTEGER, ekd TEXT);
CREATE TABLE vm (vid INTEGER, mid INTEGER);
CREATE TABLE m (id INTEGER, name TEXT);
CREATE TABLE postac_match (postac TEXT, match_ix INTEGER);
CREATE TABLE xs (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE d (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE x (id INTEGER, descr TEXT);
CREATE TABLE i (id INTEGER, descr TEXT);
CREATE TABLE z (gid INTEGER, caption TEXT, value TEXT);
CREATE TABLE w (id INTEGER, parent_id INTEGER, name TEXT, descr TEXT);
CREATE TABLE food (wid INTEGER);
CREATE TABLE vg (id INTEGER, version_id INTEGER, kind_id INTEGER, date TEXT, path TEXT);
CREATE TABLE gk (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE cfg (key TEXT, val TEXT);
INSERT INTO cfg VALUES ('data_version', '1700000000');
INSERT INTO xp VALUES (1, 'Rx');
INSERT INTO g VALUES (100, 'Paracetamolum'), (300, 'Solum'), (400, 'Testum');
INSERT INTO m VALUES (1, 'Paracetamolum'), (3, 'Solum');
INSERT INTO v VALUES (12, 'Apap 500', 1, 100, 'tabletki', '500 mg', '20 szt.', 'Corvane Pharma', '-1|15,00|-1|-1', '-1', '', ''),
                     (13, 'Apap 1000', 1, 100, 'tabletki', '1000 mg', '10 szt.', 'Corvane Pharma', '-1|19,00|-1|-1', '-1', '', ''),
                     (11, 'Apap 500', 1, 100, 'tabletki', '500 mg', '10 szt.', 'Corvane Pharma', '-1|9,99|-1|-1', '-1', '', ''),
                     (31, 'Solitarin', 1, 300, 'syrop', '5 mg/ml', '1 butelka', 'Solo', '-1|30,00|-1|-1', '-1', '', '');
INSERT INTO vm VALUES (11, 1), (12, 1), (13, 1), (31, 3);
INSERT INTO ve VALUES (11, '5900000000011'), (12, '5900000000012'), (13, '5900000000013'), (31, '5900000000031');
)sql");
    for (int n = 1; n <= 25; ++n)
        sql += QStringLiteral("INSERT INTO v VALUES (%1, 'Testowy %2', 1, 400, 'kapsułki', '%2 mg', '30 szt.', "
                              "'Testfarm', '', '-1', '', '');\n").arg(400 + n).arg(n);
    return TestSupport::buildDatabase(QDir(dir).filePath(DrugDatabase::drugDatabaseName), sql);
}

} // namespace PageFixture
