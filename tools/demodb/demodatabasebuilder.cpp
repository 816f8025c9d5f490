#include "demodatabasebuilder.h"

#include "advertwriter.h"
#include "demorandom.h"
#include "demoschema.h"
#include "drugcatalogue.h"
#include "marketfiller.h"
#include "pharmacywriter.h"
#include "recipewriter.h"
#include "referencedata.h"
#include "selfcheck.h"
#include "showcasedrugs.h"
#include "tablewriter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <cstdio>

namespace {

const QString connectionName = QStringLiteral("quillard-demodb");

struct Scale {
    int packages;     // packages to generate up to
    int eans;         // EAN codes to generate up to
    int pharmacies;
    SelfCheck::Minimum minimum;
};

// The market has about fifty times the packages of the demo, in the same
// proportions of groups and codes.
Scale scaleOf(DemoDatabaseBuilder::Size size)
{
    if (size == DemoDatabaseBuilder::Size::Market)
        return {15300, 20500, 2000, {15000, 4000, 20000}};
    // Ten markets: the base the search must still answer within a frame.
    if (size == DemoDatabaseBuilder::Size::Market10)
        return {153000, 205000, 2000, {150000, 40000, 200000}};
    return {330, 440, 40, {300, 80, 400}};
}

bool replaceFile(const QString& from, const QString& to)
{
    // rename() replaces the target in one step where the system allows it.
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return true;
    QFile::remove(to);
    return QFile::rename(from, to);
}

} // namespace

DemoDatabaseBuilder::DemoDatabaseBuilder(const Options& options)
    : options(options)
{
}

bool DemoDatabaseBuilder::build()
{
    const QFileInfo target(options.output);
    if (!QDir().mkpath(target.absolutePath())) {
        failure = QStringLiteral("cannot create the folder %1").arg(target.absolutePath());
        return false;
    }
    const QString temporary = target.absoluteFilePath() + QStringLiteral(".tmp-")
        + QString::number(QCoreApplication::applicationPid());
    QFile::remove(temporary);

    const bool built = fill(temporary);
    QSqlDatabase::removeDatabase(connectionName);
    if (!built) {
        QFile::remove(temporary);
        return false;
    }
    if (!replaceFile(temporary, target.absoluteFilePath())) {
        failure = QStringLiteral("cannot rename %1 to %2").arg(temporary, target.absoluteFilePath());
        QFile::remove(temporary);
        return false;
    }
    return true;
}

bool DemoDatabaseBuilder::fill(const QString& path)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    database.setDatabaseName(path);
    if (!database.open()) {
        failure = database.lastError().text();
        return false;
    }
    QSqlQuery pragma(database);
    // The file is thrown away on any failure, so no journal is needed.
    pragma.exec(QStringLiteral("PRAGMA journal_mode = OFF"));
    pragma.exec(QStringLiteral("PRAGMA synchronous = OFF"));

    if (!DemoSchema::create(database, &failure)) {
        database.close();
        return false;
    }

    const Scale scale = scaleOf(options.size);
    database.transaction();
    TableWriter writer(database);
    ReferenceData::write(writer);

    DrugCatalogue catalogue(writer);
    ShowcaseDrugs::write(catalogue);
    catalogue.setFirstGeneratedIds(ShowcaseDrugs::firstFreeVid, ShowcaseDrugs::firstFreeGid,
                                   ShowcaseDrugs::firstFreeIndication);
    DemoRandom random(options.seed);
    MarketFiller(catalogue, random).fill(scale.packages, scale.eans);

    PharmacyWriter::write(writer, random, scale.pharmacies);
    RecipeWriter::write(writer);
    AdvertWriter::write(writer);

    const QDateTime version = QDateTime::fromSecsSinceEpoch(options.dataVersion, Qt::UTC);
    const QDate listDate(version.date().year(), version.date().month(), 1);
    writer.insert(QStringLiteral("cfg"), {QStringLiteral("data_version"), QString::number(options.dataVersion)});
    writer.insert(QStringLiteral("cfg"), {QStringLiteral("list_date"), listDate.toString(QStringLiteral("yyyy-MM-dd"))});
    writer.insert(QStringLiteral("cfg"),
                  {QStringLiteral("demo"),
                   QStringLiteral("DEMO – dane przykładowe wygenerowane przez quillard-demodb; nazwy handlowe i "
                                  "firmy są zmyślone, nie do użytku w aptece")});
    writer.insert(QStringLiteral("cfg"),
                  {QStringLiteral("generator"),
                   QStringLiteral("quillard-demodb seed=%1 size=%2")
                       .arg(options.seed)
                       .arg(options.size == Size::Market     ? QStringLiteral("market")
                            : options.size == Size::Market10 ? QStringLiteral("market10")
                                                             : QStringLiteral("demo"))});

    if (writer.failed()) {
        failure = writer.error();
        database.rollback();
        database.close();
        return false;
    }
    if (!database.commit()) {
        failure = database.lastError().text();
        database.close();
        return false;
    }
    rowCounts = writer.counts();
    if (!DemoSchema::createIndexes(database, &failure)) {
        database.close();
        return false;
    }

    SelfCheck check(database, scale.minimum);
    const bool passed = check.run();
    if (!passed)
        failure = QStringLiteral("self-check failed:\n  ") + check.failures().join(QStringLiteral("\n  "));
    database.close();
    return passed;
}
