// Any packed refund text (v.prices) of a drug row, looked up in a small base.

#include "fuzzsupport.h"

#include "db/drugdatabase.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace {

const QString noRefundId = QStringLiteral("-1");

void createBase()
{
    const QString connection = QStringLiteral("fuzz-setup");
    {
        QSqlDatabase base = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        base.setDatabaseName(FuzzSupport::workDir() + QLatin1Char('/') + DrugDatabase::drugDatabaseName);
        FUZZ_REQUIRE(base.open());
        QSqlQuery query(base);
        // The reference tables of the demo base, a few rows each.
        for (const char* statement : {
                 "CREATE TABLE xs (id INTEGER PRIMARY KEY, name TEXT, descr TEXT)",
                 "CREATE TABLE d (id INTEGER PRIMARY KEY, name TEXT, descr TEXT)",
                 "CREATE TABLE x (id INTEGER PRIMARY KEY, descr TEXT)",
                 "INSERT INTO xs VALUES (1, '100%', 'Pełna odpłatność'), (2, 'ryczałt', 'Odpłatność ryczałtowa'),"
                 " (3, '30%', 'Odpłatność 30%'), (9, 'S', 'Bezpłatnie dla seniorów')",
                 "INSERT INTO d VALUES (1, 'Nowotwory', 'Ból nowotworowy'), (7, 'Padaczka', ''),"
                 " (13, 'chemioterapia', 'Chemioterapia')",
                 "INSERT INTO x VALUES (1, 'Ból przewlekły'), (2, 'Profilaktyka')"})
            FUZZ_REQUIRE(query.exec(QString::fromUtf8(statement)));
        base.close();
    }
    QSqlDatabase::removeDatabase(connection);
}

QString partAt(const QStringList& parts, int index)
{
    return index < parts.size() ? parts.at(index) : QString();
}

// A row found by a field must be the row that the field names as a number:
// the field is bound, never read as SQL, so nothing else can match.
void checkFound(const QString& field, const QString& id)
{
    if (field == noRefundId) {
        FUZZ_REQUIRE(id == noRefundId);
        return;
    }
    if (id.isEmpty())
        return;
    bool isNumber = false;
    const double named = field.toDouble(&isNumber);
    FUZZ_REQUIRE(isNumber);
    FUZZ_REQUIRE(named == id.toDouble());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    createBase();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString prices = QString::fromUtf8(FuzzSupport::bytes(data, size));
    const QList<DrugPrice> rows = DrugDatabase::refundRows(prices);

    // One row per group of four fields, the last one possibly short; positions
    // are kept, so an empty payment never shifts the ids.
    const QStringList parts = prices.split(QLatin1Char('|'));
    FUZZ_REQUIRE(rows.size() == (parts.size() + 3) / 4);
    for (int row = 0; row < rows.size(); ++row) {
        const DrugPrice& price = rows.at(row);
        FUZZ_REQUIRE(price.payment == partAt(parts, 4 * row + 1));
        checkFound(partAt(parts, 4 * row), price.level.id);
        checkFound(partAt(parts, 4 * row + 2), price.scope.id);
        checkFound(partAt(parts, 4 * row + 3), price.offLabel.id);
        if (partAt(parts, 4 * row) == noRefundId)
            FUZZ_REQUIRE(price.level.name == QLatin1String("100%"));
        if (partAt(parts, 4 * row + 3) == noRefundId)
            FUZZ_REQUIRE(price.offLabel.descr == QStringLiteral("Brak wskazań"));
    }
    return 0;
}
