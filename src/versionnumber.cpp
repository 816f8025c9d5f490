#include "versionnumber.h"

#include <QStringList>

VersionNumber::VersionNumber(const QString& text)
{
    if (text.isEmpty())
        return;
    const QStringList numbers = text.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    for (int i = 0; i < int(parts.size()) && i < numbers.size(); ++i)
        parts[size_t(i)] = numbers.at(i).toUInt(nullptr, 10);
}

bool VersionNumber::operator>=(const VersionNumber& other) const
{
    for (size_t i = 0; i < parts.size(); ++i) {
        if (parts[i] != other.parts[i])
            return parts[i] > other.parts[i];
    }
    return true;
}
