// A child process for the cut-off tests: one database update of the program
// folder given on the command line, as the main window runs it (download, then
// unpack and replace), with each step told on stdout so that the parent can
// kill it at a chosen point. An optional second argument limits the size of
// every file it writes, as a full disk would.

#include "appdir.h"
#include "db/drugdatabase.h"
#include "update/databaseupdater.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <csignal>
#endif

namespace {

void say(const char* step)
{
    std::fputs(step, stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 2)
        return 2;
    setProgramDir(args.at(1));
#ifdef Q_OS_UNIX
    if (args.size() > 2) {
        // A write past the limit then fails with EFBIG instead of ending the process.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit { rlim_t(args.at(2).toLongLong()), RLIM_INFINITY };
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 2;
    }
#endif

    DatabaseUpdater updater;
    QObject::connect(&updater, &DatabaseUpdater::downloaded, &updater, [&updater] {
        say("unpack");
        DrugDatabase::closeDatabase();
        updater.replaceDatabase(QDir(programDir()).filePath(DrugDatabase::drugDatabaseName));
    });
    QObject::connect(&updater, &DatabaseUpdater::replaced, &app, [] {
        say("replaced");
        QCoreApplication::exit(0);
    });
    QObject::connect(&updater, &DatabaseUpdater::error, &app, [] {
        say("failed");
        QCoreApplication::exit(1);
    });
    updater.setLocalVersion(DrugDatabase::dataVersion());
    say("download");
    updater.download();
    return QCoreApplication::exec();
}
