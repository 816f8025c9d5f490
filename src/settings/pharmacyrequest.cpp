#include "pharmacyrequest.h"

#include <QJsonArray>
#include <QRegularExpression>

QJsonObject PharmacyRequest::toJson(const QString& appKey) const
{
    QJsonArray openHours;
    for (int row = 0; row < hours.size(); ++row) {
        QJsonObject day;
        day.insert(QStringLiteral("type_id"), QString::number(row + 1));
        // The service reads one hour a day under "start_hour": each cell writes
        // there in turn, so the closing hour is what it receives.
        for (const QString& hour : hours.at(row))
            day.insert(QStringLiteral("start_hour"), hour);
        openHours.append(day);
    }

    QJsonObject body;
    body.insert(QStringLiteral("app_key"), appKey);
    body.insert(QStringLiteral("name"), name);
    body.insert(QStringLiteral("city"), city);
    body.insert(QStringLiteral("street"), street);
    body.insert(QStringLiteral("zip"), zip);
    body.insert(QStringLiteral("phone"), phones.join(QLatin1Char(',')));
    body.insert(QStringLiteral("email"), email);
    body.insert(QStringLiteral("www"), www);
    if (pharmacyId)
        body.insert(QStringLiteral("nw_pharmacy_id"), *pharmacyId);
    body.insert(QStringLiteral("open_hours"), openHours);
    return body;
}

QStringList PharmacyRequest::splitPhones(const QString& phone)
{
    static const QRegularExpression separators(QStringLiteral("(\\,|\\:|\\;|\\t)"));
    return phone.split(separators, Qt::SkipEmptyParts);
}
