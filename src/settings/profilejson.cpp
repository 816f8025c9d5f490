#include "profilejson.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QSettings>

namespace ProfileJson {

QJsonObject parse(const QString& text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return {};
    return document.object();
}

QJsonObject read(const QString& key)
{
    return parse(QSettings().value(key).toString());
}

void write(const QString& key, const QJsonObject& object)
{
    QSettings settings;
    settings.setValue(key, QString::fromUtf8(compact(object)));
    settings.sync();
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QStringList zipParts(const QString& zip)
{
    return zip.split(QLatin1Char('-'), Qt::SkipEmptyParts);
}

} // namespace ProfileJson
