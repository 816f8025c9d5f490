#pragma once

class QSqlQuery;

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

// Checks a freshly built database before it replaces the old one: every
// table has rows, keys meet, the packed texts have their form, and the
// showcase drugs behave as tools/demodb/README.md says.
class SelfCheck {
public:
    struct Minimum {
        int packages = 0;
        int groups = 0;
        int eans = 0;
    };

    SelfCheck(const QSqlDatabase& database, const Minimum& minimum);

    bool run();
    QStringList failures() const { return problems; }

private:
    void checkTables();
    void checkSizes();
    void checkKeys();
    void checkEans();
    void checkPrices();
    void checkTexts();
    void checkLeaflets();
    void checkDescriptions();
    void checkWarnings();
    void checkGifDecisions();
    void checkAdverts();
    void checkPharmacies();
    void checkRecipes();
    void checkConfiguration();
    void checkShowcase();

    QStringList substitutesOf(const QString& vid);
    bool run(QSqlQuery& query, const QString& statement, const QVariantList& bound);
    QVariant value(const QString& statement, const QVariantList& bound = {});
    QStringList column(const QString& statement, const QVariantList& bound = {});
    void expect(bool condition, const QString& problem);

    QSqlDatabase database;
    Minimum minimum;
    QStringList problems;
};
