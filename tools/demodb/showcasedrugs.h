#pragma once

#include <QList>
#include <QString>

class DrugCatalogue;

// The hand-made drugs that tests and demonstrations rely on. Their ids and
// EAN codes are the same for every seed and size; tools/demodb/README.md lists
// them with what each one shows.
class ShowcaseDrugs {
public:
    struct Fact {
        QString ean;
        QString vid;
        QString text;
    };

    static void write(DrugCatalogue& catalogue);
    static const QList<Fact>& facts();

    // EAN-13 of showcase code `serial`: 590999 + six digits + check digit.
    static QString code(int serial);

    // Ids at and above these are free for the generated market.
    static const int firstFreeVid = 101001;
    static const int firstFreeGid = 101;
    static const int firstFreeIndication = 101;

    // Group of the paracetamol 500 mg tablets; the animated banner leads here.
    static const int paracetamolGroup = 1;
    // Group without a full-price row; a banner with a web address leads here too.
    static const int noFullPriceGroup = 17;
    // A group id that g never holds: a package and a banner point at it.
    static const int missingGroup = 99;
    // The package of that group, and the package id of an EAN code with no row in v.
    static const int packageWithoutGroup = 100087;
    static const int vidWithoutPackage = 100088;
};
