#include "appkey.h"

#include "settingskeys.h"

#include <QSettings>
#include <QUuid>

QString ensureAppKey()
{
    QSettings settings;
    QString key = settings.value(SettingsKeys::appKey).toString();
    if (key.isEmpty()) {
        key = QUuid::createUuid().toString();
        settings.setValue(SettingsKeys::appKey, key);
        settings.sync();
    }
    return key;
}
