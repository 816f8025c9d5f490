#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class TableWriter;

// Adds groups, packages and what hangs on them (EAN codes, substances,
// descriptions, GIF decisions) with consistent keys. The showcase drugs and
// the generated market share one catalogue.
class DrugCatalogue {
public:
    struct Package {
        int vid = 0; // 0: the next free id
        QString name;
        int status = 0;
        int gid = 0;
        QString kind;
        QString dose;
        QString box;
        QString company;
        QString prices;
        int iid = -1; // -1: no indications text
        QString leaflet;
        QString warns;
        QStringList substances;
        QStringList eans; // empty: one generated code
        QStringList nullColumns; // columns of v stored as NULL, not as ''
    };

    explicit DrugCatalogue(TableWriter& writer);

    // The first generated ids; the showcase takes fixed ids below them.
    void setFirstGeneratedIds(int vid, int gid, int indicationId);

    int addGroup(const QString& inn, int gid = 0);
    int addIndication(const QString& descr, int id = 0);
    void addDescription(int gid, const QString& caption, const QString& value);
    // The id the next package without one would get, taken now.
    int newVid() { return nextVid++; }
    int addPackage(const Package& package);
    void addEan(int vid, const QString& ean);
    void addGifDecision(int vid, int kindId, const QString& date, const QString& path);

    // A new EAN-13 code of the generated range, never one of the showcase.
    QString nextEan(int step);
    int packageCount() const { return packages; }
    int eanCount() const { return eans; }
    int groupCount() const { return groups; }

    // Twelve digits plus their EAN-13 check digit.
    static QString ean13(const QString& twelveDigits);

private:
    int substanceId(const QString& name);

    TableWriter& writer;
    QHash<QString, int> substanceIds;
    int nextVid = 1;
    int nextGid = 1;
    int nextIndication = 1;
    int nextGifDecision = 1;
    qint64 eanSerial = 100000000; // 590 + nine digits: 5901... upward
    int packages = 0;
    int eans = 0;
    int groups = 0;
};
