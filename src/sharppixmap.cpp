#include "sharppixmap.h"

#include <QGuiApplication>
#include <QIcon>

QPixmap sharpPixmap(const QString& resource)
{
    qreal ratio = 1.0;
    const QString file = qt_findAtNxFile(resource, qApp ? qApp->devicePixelRatio() : 1.0, &ratio);
    QPixmap pixmap(file);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}
