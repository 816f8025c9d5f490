#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// The profile data kept in the settings store as compact JSON texts
// (user_info_json, pharmacy_info_json).
namespace ProfileJson {

// The object stored under `key`; a text that is absent or doesn't parse as a
// JSON object reads as an empty object.
QJsonObject read(const QString& key);
// The object of a stored text; anything but a JSON object reads as an empty object.
QJsonObject parse(const QString& text);
// Stores the compact JSON of `object` under `key` and syncs at once.
void write(const QString& key, const QJsonObject& object);
QByteArray compact(const QJsonObject& object);

// "00-950" as {"00", "950"}; empty parts are skipped, so "950" is {"950"}.
QStringList zipParts(const QString& zip);

} // namespace ProfileJson
