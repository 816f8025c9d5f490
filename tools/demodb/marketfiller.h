#pragma once

#include <QHash>
#include <QList>
#include <QString>

class DemoRandom;
class DrugCatalogue;

// Fills the catalogue up to a market size with generated but plausible
// packages: groups of one strength and one form class, several makers per
// group, refund rows that share a scope, codes, warnings and decisions.
class MarketFiller {
public:
    MarketFiller(DrugCatalogue& catalogue, DemoRandom& random);

    void fill(int packageTarget, int eanTarget);

private:
    struct Brand {
        QString name;
        QString company;
    };
    struct Strength {
        int substance = 0; // index in SubstancePool
        QString dose;
    };
    struct Refund {
        int level = 0; // 0: no refund
        int scope = 0;
        int offLabel = 0;
        bool senior = false;
    };

    Strength nextStrength();
    void addGroup(const Strength& strength);
    Brand brand(int substanceIndex);
    QString inventedName();
    QString prices(int fullGrosze, const Refund& refund);
    QString money(int grosze);
    QString fullPriceGroup(int grosze);
    QString box(const QString& kind);
    QString warns();
    QString leaflet(int vid);
    void addGifDecisions(int vid);

    DrugCatalogue& catalogue;
    DemoRandom& random;
    QHash<int, QList<Brand>> brands;
    QList<int> generatedVids;
    QList<Strength> strengths;
    int gifSerial = 1000;
};
