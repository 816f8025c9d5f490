#include "fuzzsupport.h"

#include "appdir.h"

#include <QApplication>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace FuzzSupport {

namespace {

// Millions of inputs go through code that logs at every step; the log is noise here.
void silentHandler(QtMsgType, const QMessageLogContext&, const QString&)
{
}

std::unique_ptr<QTemporaryDir>& temporaryDir()
{
    static std::unique_ptr<QTemporaryDir> dir;
    return dir;
}

} // namespace

void fail(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "Invariant broken: %s (%s:%d)\n", condition, file, line);
    std::fflush(stderr);
    std::abort();
}

void setUp()
{
    if (QCoreApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(silentHandler);
    QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
    QCoreApplication::setApplicationName(QStringLiteral("QuillardFuzz"));
    QStandardPaths::setTestModeEnabled(true);

    // Settings are written for every input: in memory where the system offers
    // it, since a disk's fsync would set the pace.
    const QString memory = QStringLiteral("/dev/shm");
    temporaryDir() = QFileInfo(memory).isWritable()
                         ? std::make_unique<QTemporaryDir>(memory + QStringLiteral("/quillard-fuzz-XXXXXX"))
                         : std::make_unique<QTemporaryDir>();
    FUZZ_REQUIRE(temporaryDir()->isValid());
    // Never the user's settings, whatever the environment says.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temporaryDir()->filePath(QStringLiteral("config")));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, temporaryDir()->filePath(QStringLiteral("config")));
    setProgramDir(temporaryDir()->path());

    static int argc = 1;
    static char name[] = "quillard-fuzz";
    static char* argv[] = {name, nullptr};
    // Lives to the end of the process, as the program's own does.
    new QApplication(argc, argv);
}

QString workDir()
{
    return temporaryDir()->path();
}

QByteArray bytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), int(size));
}

QString replyText(const QByteArray& body)
{
    const int end = body.indexOf('\0');
    return QString::fromUtf8(end < 0 ? body : body.left(end));
}

} // namespace FuzzSupport
