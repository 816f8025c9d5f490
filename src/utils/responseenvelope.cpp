#include "responseenvelope.h"

#include <QJsonDocument>
#include <QJsonObject>

ResponseEnvelope ResponseEnvelope::parse(const QString& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    ResponseEnvelope envelope;
    envelope.success = object.value(QStringLiteral("status")).toString() == QLatin1String("success");
    envelope.message = object.value(QStringLiteral("message")).toString();
    return envelope;
}
