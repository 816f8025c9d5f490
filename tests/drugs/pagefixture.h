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
    QString sql = TestSupport::drugSchema() + QStringLiteral(R"sql(
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
