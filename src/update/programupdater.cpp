#include "programupdater.h"

#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "urls.h"
#include "utils/raven.h"
#include "versionnumber.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace
{

const char sourcePath[] = "../QuillardDesktop/programupdater";

} // namespace

ProgramUpdater::ProgramUpdater(QObject* parent)
    : QObject(parent)
{
    connect(&versionGet, &QtHttpGet::result, this, &ProgramUpdater::onVersionDownload);
    connect(&updaterGet, &QtHttpGet::result, this, &ProgramUpdater::onUpdaterDownload);
    connect(&listGet, &QtHttpGet::result, this, &ProgramUpdater::onFileDownload);
}

ProgramUpdater::~ProgramUpdater() = default;

void ProgramUpdater::checkVersion()
{
    versionGet.get(appVersionUrl);
}

bool ProgramUpdater::isSelfUpdating()
{
    return QUILLARD_SELF_UPDATE != 0;
}

void ProgramUpdater::downloadUpdate()
{
    if (!isSelfUpdating()) {
        qDebug() << "D/ProgramUpdater::downloadUpdate | updates come from the package manager";
        return;
    }
    listGet.get(appListUrl);
}

bool ProgramUpdater::isPlainFileName(const QString& name)
{
    // The name comes from the service; it may only name a file in the
    // program's own folder, never reach above or below it. On Windows a ":"
    // names a drive ("C:x.exe") or a stream, and control characters or "."
    // alone name no file of the folder at all.
    if (name.isEmpty() || name == QLatin1String(".") || name.contains(QLatin1String("..")))
        return false;
    for (const QChar c : name) {
        if (c.unicode() < 0x20 || QStringLiteral("/\\:*?\"<>|").contains(c))
            return false;
    }
    if (QFileInfo(name).fileName() != name)
        return false;
    // Nor may it overwrite the program's own files beside it. Windows matches
    // file names without regard to case, so the comparison does too.
    const QStringList ownFiles{DrugDatabase::drugDatabaseName, DrugDatabase::statisticsDatabaseName,
                               QStringLiteral("log.log"),
                               QFileInfo(QCoreApplication::applicationFilePath()).fileName()};
    for (const QString& own : ownFiles) {
        if (name.compare(own, Qt::CaseInsensitive) == 0)
            return false;
    }
    return true;
}

QString ProgramUpdater::fileNameFromList(const QByteArray& list)
{
    const QJsonDocument document = QJsonDocument::fromJson(list);
    return document.array().at(1).toArray().at(0).toArray().at(1).toArray().at(1).toArray().at(1).toString();
}

bool ProgramUpdater::isTrustedSource(const QUrl& url)
{
    // An installer runs with the user's rights, so it is only started when it
    // came over TLS or from this very computer.
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("https"))
        return true;
    if (scheme != QLatin1String("http"))
        return false;
    const QString host = url.host();
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    QHostAddress address;
    return address.setAddress(host) && address.isLoopback();
}

void ProgramUpdater::onVersionDownload(QNetworkReply* reply)
{
    if (reply->error() != QNetworkReply::NoError) {
        Raven::capture(3, Raven::locationString(sourcePath, "onVersionDownload", __LINE__),
            QStringLiteral("Version download error: ") + reply->errorString(), QJsonObject(), QJsonObject());
        emit error();
        return;
    }

    const QString online = QtHttpGet::replyText(reply);
    qDebug().noquote() << "Online version" << online;
    // An answer that reads as no version at all is 0.0.0.0 and offers nothing.
    if (VersionNumber(programVersion) >= VersionNumber(online))
        emit actVersion();
    else
        emit oldVersion(programVersion, online);
}

void ProgramUpdater::onFileDownload(QNetworkReply* reply)
{
    if (!reply->isSequential())
        reply->seek(0);
    fileName = fileNameFromList(reply->readAll());
    qDebug().noquote() << "Downloaded file" << fileName;
    downloadUpdaterFile();
}

void ProgramUpdater::onUpdaterDownload(QNetworkReply* reply)
{
    if (!reply->isSequential())
        reply->seek(0);
    const QByteArray bytes = reply->readAll();

    if (!isSelfUpdating()) {
        failUpdaterDownload(__LINE__, QStringLiteral("updates come from the package manager"));
        return;
    }

    // Written only as a plain file name inside the program's folder.
    if (!isPlainFileName(fileName)) {
        failUpdaterDownload(__LINE__, QStringLiteral("not a plain file name: \"%1\"").arg(fileName));
        return;
    }
    // A failed request's body is an error page, not an installer: it is neither
    // written nor started, and the program keeps running.
    if (reply->error() != QNetworkReply::NoError) {
        failUpdaterDownload(__LINE__, reply->errorString());
        return;
    }
    if (bytes.isEmpty()) {
        failUpdaterDownload(__LINE__, QStringLiteral("empty file"));
        return;
    }
    // Only what came over TLS or from this computer is written and started.
    const QUrl source = reply->url();
    if (!isTrustedSource(source)) {
        qWarning().noquote() << "D/ProgramUpdater::onUpdaterDownload | Installer not started: it came over"
                             << source.scheme() << "from" << source.host()
                             << "and only https or this computer is trusted";
        failUpdaterDownload(__LINE__, QStringLiteral("untrusted source ") + source.toDisplayString());
        return;
    }

    const QString path = AppDir::installerPath(fileName);
    qDebug().noquote() << "Write to " << path << bytes.size();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        failUpdaterDownload(__LINE__, file.errorString());
        return;
    }
    if (file.write(bytes) != bytes.size()) {
        const QString reason = file.errorString();
        file.remove();
        failUpdaterDownload(__LINE__, reason);
        return;
    }
    file.close();
#ifndef Q_OS_WIN
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
#endif

    // An argument list, so the path is never split or read by a shell.
    const bool started = QProcess::startDetached(path, QStringList());
    qDebug().noquote() << "Start update detached" << (started ? "true" : "false");
    QCoreApplication::quit();
}

std::unique_ptr<QFile> ProgramUpdater::updaterFile(const QString& name)
{
    QDir dir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    dir.mkpath(QStringLiteral("."));
    dir.mkpath(updaterDirName);
    dir.cd(updaterDirName);
    return std::make_unique<QFile>(dir.filePath(name));
}

void ProgramUpdater::downloadUpdaterFile()
{
    updaterGet.get(appFileUrl + fileName);
}

void ProgramUpdater::failUpdaterDownload(int line, const QString& reason)
{
    Raven::capture(3, Raven::locationString(sourcePath, "onUpdaterDownload", line),
        QStringLiteral("Updater download error: ") + reason, QJsonObject(), QJsonObject());
    emit error();
}
