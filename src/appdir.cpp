#include "appdir.h"

#include <QCoreApplication>

namespace {
QString overriddenDir;
}

QString programDir()
{
    if (!overriddenDir.isEmpty())
        return overriddenDir;
    return QCoreApplication::applicationDirPath();
}

void setProgramDir(const QString& path)
{
    overriddenDir = path;
}
