#include "appdir.h"
#include "db/drugdatabase.h"
#include "db/sqlitefolding.h"
#include "testsupport.h"

#include <QDir>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString referenceName = QStringLiteral("reference");

// The search statement as the database layer runs it when no index is there.
const QString statementSql = QStringLiteral(
    "SELECT v.vid, v.name, xp.name, g.inn, v.kind, v.dose, v.box, v.company, v.prices, v.iid, g.gid "
    "FROM v LEFT JOIN g ON g.gid = v.gid LEFT JOIN xp ON xp.id = v.pid LEFT JOIN ve ON ve.vid = v.vid WHERE 1 ");
const QString wordSql = QStringLiteral(
    " AND ((UPPER(v.name) LIKE UPPER('% ' || ? || '%') OR UPPER(v.name) LIKE UPPER(? || '%')) OR ve.ekd LIKE '%' || ? || '%') ");

const QStringList pieces = {QStringLiteral("Para"), QStringLiteral("ceta"), QStringLiteral("mol"),
                            QStringLiteral("żel"), QStringLiteral("ŻEL"), QStringLiteral("Mię"),
                            QStringLiteral("ąść"), QStringLiteral("Ó"), QStringLiteral("straße"),
                            QStringLiteral("d'A"), QStringLiteral("%"), QStringLiteral("_"),
                            QStringLiteral("590"), QStringLiteral("12"), QStringLiteral("x"),
                            QStringLiteral(" "), QStringLiteral("a"), QStringLiteral("Forte")};

QString randomText(QRandomGenerator& random, int parts)
{
    QString text;
    for (int i = 0; i < parts; ++i)
        text += pieces.at(random.bounded(pieces.size()));
    return text;
}

// A base without indexes or keys: names in every case, NULL names and codes,
// wildcards and quotes in names, groups listed twice, codes of no package.
QString randomBaseSql()
{
    QRandomGenerator random(7);
    QString sql = TestSupport::drugSchema();
    sql += QStringLiteral("INSERT INTO xp VALUES (1, 'Dopuszczony'), (2, 'Wycofany');\n");
    for (int gid = 1; gid <= 40; ++gid) {
        sql += QStringLiteral("INSERT INTO g VALUES (%1, 'inn %1');\n").arg(gid);
        if (gid % 13 == 0)
            sql += QStringLiteral("INSERT INTO g VALUES (%1, 'again %1');\n").arg(gid);
    }
    for (int vid = 1; vid <= 300; ++vid) {
        QString name = randomText(random, 1 + random.bounded(4));
        name = random.bounded(3) == 0 ? name.toUpper() : name;
        const QString nameValue =
            vid % 37 == 0 ? QStringLiteral("NULL") : QLatin1Char('\'') + name.replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
        sql += QStringLiteral("INSERT INTO v VALUES (%1, %2, %3, %4, 'tabl.', '1 mg', '1 szt.', 'F', '', 1, '', '');\n")
                   .arg(vid).arg(nameValue).arg(1 + random.bounded(3)).arg(1 + random.bounded(45));
        for (int code = random.bounded(4); code > 0; --code) {
            const QString ekd = random.bounded(20) == 0 ? QStringLiteral("NULL")
                                                        : QStringLiteral("'59%1'").arg(random.bounded(100000000));
            sql += QStringLiteral("INSERT INTO ve VALUES (%1, %2);\n").arg(vid).arg(ekd);
        }
    }
    sql += QStringLiteral("INSERT INTO ve VALUES (999, '5901234'), (5, 'AbŻ%x');\n");
    return sql;
}

QStringList typedTexts(const QString& kind)
{
#ifdef QUILLARD_SANITIZED_BUILD
    constexpr int count = 100;
#else
    constexpr int count = 700;
#endif
    QRandomGenerator random(11);
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        if (kind == QLatin1String("pieces"))
            texts << randomText(random, 1 + random.bounded(3));
        else if (kind == QLatin1String("digits"))
            texts << QString::number(random.bounded(1000000)).left(1 + random.bounded(6));
        else
            texts << randomText(random, 1).left(1 + random.bounded(3)) + QLatin1Char(' ')
                         + randomText(random, 1).left(random.bounded(3));
    }
    return texts;
}

QList<QStringList> statementRows(const QStringList& words, int limit)
{
    QString sql = statementSql;
    for (int i = 0; i < words.size(); ++i)
        sql += wordSql;
    QSqlQuery query(QSqlDatabase::database(referenceName));
    query.prepare(sql + QStringLiteral(" LIMIT ") + QString::number(limit));
    for (const QString& word : words) {
        for (int i = 0; i < 3; ++i)
            query.addBindValue(word.isNull() ? QStringLiteral("") : word);
    }
    query.exec();
    QList<QStringList> rows;
    while (query.next()) {
        QStringList row;
        for (int column = 0; column < 11; ++column)
            row << query.value(column).toString();
        rows << row;
    }
    return rows;
}

QList<QStringList> searchedRows(const QStringList& words, int limit)
{
    QList<QStringList> rows;
    for (const Drug& d : DrugDatabase::searchDrugs(words, limit))
        rows << QStringList{d.vid, d.name, d.status, d.inn, d.kind, d.dose, d.box, d.company, d.prices, d.iid, d.gid};
    return rows;
}

} // namespace

class TestSearchIndex : public QObject {
    Q_OBJECT

private slots:
    void matchesStatement_data();
    void matchesStatement();
    void followsReplacedBase();
    void workerThatCannotOpenGivesUp();
    void cleanupTestCase();

private:
    void useBase(const QString& base);

    QTemporaryDir dir;
};

void TestSearchIndex::useBase(const QString& base)
{
    QSqlDatabase::removeDatabase(referenceName);
    if (base == QLatin1String("demo")) {
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
    } else {
        DrugDatabase::closeDatabase();
        setProgramDir(dir.path());
        const QString path = dir.filePath(DrugDatabase::drugDatabaseName);
        QFile::remove(path);
        QVERIFY(TestSupport::buildDatabase(path, randomBaseSql()));
    }
    QSqlDatabase reference = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), referenceName);
    reference.setDatabaseName(dir.filePath(DrugDatabase::drugDatabaseName));
    QVERIFY(reference.open());
    QVERIFY(SqliteFolding::install(reference));
}

void TestSearchIndex::matchesStatement_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("kind");
    QTest::newRow("demo base, typed names") << "demo" << "pieces";
    QTest::newRow("demo base, code digits") << "demo" << "digits";
    QTest::newRow("demo base, two words and blanks") << "demo" << "words";
    QTest::newRow("base without keys, typed names") << "random" << "pieces";
    QTest::newRow("base without keys, two words and blanks") << "random" << "words";
}

// Any difference in rows, order, duplicates or folding from the statement fails here.
void TestSearchIndex::matchesStatement()
{
    QFETCH(QString, base);
    QFETCH(QString, kind);
    useBase(base);
    QVERIFY(DrugDatabase::waitForSearchIndex());

    const QStringList texts = typedTexts(kind);
    for (int i = 0; i < texts.size(); ++i) {
        const QStringList words = texts.at(i).split(QLatin1Char(' '), Qt::KeepEmptyParts);
        const int limit = i % 10 == 0 ? 1000 : 20;
        QCOMPARE(searchedRows(words, limit), statementRows(words, limit));
    }
}

// A base replaced after a close is searched, and its refund rows read, as it
// is now, not as it was.
void TestSearchIndex::followsReplacedBase()
{
    useBase(QStringLiteral("demo"));
    QVERIFY(DrugDatabase::waitForSearchIndex());
    const QStringList words{QStringLiteral("Sirop")};
    QCOMPARE(DrugDatabase::searchDrugs(words, 20).size(), 1);
    QVERIFY(!DrugDatabase::refundLevelById(QStringLiteral("2")).name.isEmpty());

    useBase(QStringLiteral("random"));
    QVERIFY(DrugDatabase::refundLevelById(QStringLiteral("2")).name.isEmpty());
    QVERIFY(DrugDatabase::searchDrugs(words, 20).isEmpty());
    QVERIFY(DrugDatabase::waitForSearchIndex());
    QVERIFY(DrugDatabase::searchDrugs(words, 20).isEmpty());
    QCOMPARE(searchedRows({QStringLiteral("59")}, 1000), statementRows({QStringLiteral("59")}, 1000));
}

// Regression: the index worker ended the whole process with exit(1) from its
// pool thread when it couldn't open the base.
void TestSearchIndex::workerThatCannotOpenGivesUp()
{
    useBase(QStringLiteral("demo"));
    DrugDatabase::closeDatabase();
    DrugDatabase::openDatabase(DrugDatabase::drugDatabaseName);
    // The main thread's connection stays open; the worker's own opening fails.
    setProgramDir(dir.filePath(QStringLiteral("gone")));
    QVERIFY(!DrugDatabase::waitForSearchIndex());
    QCOMPARE(DrugDatabase::searchDrugs({QStringLiteral("Sirop")}, 20).size(), 1);
    DrugDatabase::closeDatabase();
    setProgramDir(dir.path());
}

void TestSearchIndex::cleanupTestCase()
{
    QSqlDatabase::removeDatabase(referenceName);
    DrugDatabase::closeDatabase();
}

QTEST_GUILESS_MAIN(TestSearchIndex)
#include "tst_searchindex.moc"
