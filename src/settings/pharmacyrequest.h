#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What the pharmacy look-up sends to the desktop API: the form's fields as they
// stand, so that a user's corrections to a known pharmacy go out too.
struct PharmacyRequest {
    QString name;
    QString city;
    QString street;
    QString zip;
    QString email;
    QString www;
    QStringList phones;
    // One entry per day row of the hours table: the texts of its hour cells, opening first.
    QList<QStringList> hours;
    // The database's id of a pharmacy picked from the results; none for a new one.
    std::optional<int> pharmacyId;

    QJsonObject toJson(const QString& appKey) const;

    // A phone field of the database as its numbers: "a,b;c" is three rows.
    static QStringList splitPhones(const QString& phone);
};
