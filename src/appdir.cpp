#include "appdir.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace {

QString overriddenDir;
AppDir::Layout chosenLayout = AppDir::Layout::Portable;
QString installedDataDir;

const QString organizationName = QStringLiteral("Corvane");
const QString applicationName = QStringLiteral("Quillard");

} // namespace

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

namespace AppDir {

Layout layoutOf(const QString& folder)
{
    const QFileInfo database(QDir(folder).filePath(drugDatabaseName));
    // A base the user can't write can't be updated, so it marks a system install.
    return database.isFile() && database.isWritable() ? Layout::Portable : Layout::Installed;
}

QString userDataFolder()
{
    // The start asks before the application's names are set (the first pass of
    // the window runs without them), so they are lent for this one question.
    const QString organization = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    QCoreApplication::setOrganizationName(organizationName);
    QCoreApplication::setApplicationName(applicationName);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setApplicationName(application);
    return folder;
}

void choose()
{
    const Layout chosen = layoutOf(programDir());
    use(chosen, chosen == Layout::Installed ? userDataFolder() : QString());
    if (chosen == Layout::Installed && !QDir().mkpath(installedDataDir))
        qWarning().noquote() << "D/AppDir::choose | can't make the data folder" << installedDataDir;
}

void use(Layout layout, const QString& dataFolder)
{
    chosenLayout = layout;
    installedDataDir = layout == Layout::Installed ? QDir::cleanPath(dataFolder) : QString();
}

Layout layout()
{
    return chosenLayout;
}

QString dataDir()
{
    return chosenLayout == Layout::Installed ? installedDataDir : programDir();
}

QString dataFile(const QString& name)
{
    return dataDir() + QLatin1Char('/') + name;
}

QString databasePath()
{
    return dataFile(drugDatabaseName);
}

QString statisticsPath()
{
    return dataFile(statisticsDatabaseName);
}

QString tempDir()
{
    return dataFile(QStringLiteral("temp/"));
}

QString cacheDir()
{
    return dataFile(QStringLiteral("cache/"));
}

QString archivePath()
{
    return dataFile(QStringLiteral("temp.zip"));
}

QString logPath()
{
    const QString name = QStringLiteral("log.log");
    return chosenLayout == Layout::Installed ? dataFile(name) : name;
}

QString installerPath(const QString& name)
{
    return dataFile(name);
}

QString bundledToolPath(const QString& file)
{
    return programDir() + QStringLiteral("/utils/poppler/") + file;
}

QString starterDatabasePath()
{
    return QDir::cleanPath(programDir() + QStringLiteral("/../share/quillard/") + drugDatabaseName);
}

bool provideStarterDatabase()
{
    const QString target = databasePath();
    if (chosenLayout != Layout::Installed || QFileInfo::exists(target))
        return QFileInfo::exists(target);
    const QString starter = starterDatabasePath();
    if (!QFileInfo::exists(starter)) {
        qDebug().noquote() << "D/AppDir::provideStarterDatabase | no starter base at" << starter;
        return false;
    }
    // Copied under another name and renamed, so that a start cut short leaves
    // no half-copied base that would pass for the user's.
    // Two first starts at one moment each copy to a file of their own.
    const QString part = target + QStringLiteral(".part-") + QString::number(QCoreApplication::applicationPid());
    QFile::remove(part);
    if (!QFile::copy(starter, part)) {
        qWarning().noquote() << "D/AppDir::provideStarterDatabase | can't copy" << starter << "to" << part;
        return false;
    }
    // The package's copy is read-only; the user's must take updates.
    QFile::setPermissions(part, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (!QFile::rename(part, target)) {
        QFile::remove(part);
        return false;
    }
    qDebug().noquote() << "D/AppDir::provideStarterDatabase | the starter base copied to" << target;
    return true;
}

QString instanceKey()
{
#ifdef Q_OS_WIN
    QString user = qEnvironmentVariable("USERNAME");
    for (QChar& c : user) {
        if (!c.isLetterOrNumber())
            c = QLatin1Char('_');
    }
#else
    const QString user = QString::number(getuid());
#endif
    return QStringLiteral("CorvaneQuillardKey-") + user;
}

} // namespace AppDir
