#pragma once

#include <QString>

// The program's own folder: where the executable and what came with it (the
// poppler tools) are. Tests point it at a folder of their own.
QString programDir();
void setProgramDir(const QString& path);

// The one answer to "where does file X live". Two layouts, settled at start:
// portable, where the program's folder holds a writable database and every
// file lives beside the program (the Windows install, the build tree); and
// installed (the program under /usr), where the base, the statistics, temp/,
// cache/, the update archive, the installer and the log live in the user's
// data folder. Nothing else builds such a path.
namespace AppDir {

enum class Layout { Portable, Installed };

inline const QString drugDatabaseName = QStringLiteral("corvane_quillard_desktop.sqlite3");
inline const QString statisticsDatabaseName = QStringLiteral("statistics.sqlite3");

// Portable when `folder` holds a database the user may write, installed otherwise.
Layout layoutOf(const QString& folder);

// Settles the layout from the program's folder; in the installed one the
// user's data folder is made. Until it is called (and in most tests) the
// layout is portable.
void choose();
// Sets a layout directly; `dataFolder` is the user's data folder of the installed one.
void use(Layout layout, const QString& dataFolder = QString());
Layout layout();

// The user's data folder of an installed program, whatever the application's
// names are at the moment of asking.
QString userDataFolder();

// Where the program writes: the program's folder or the user's data folder.
QString dataDir();
// A plain file name inside dataDir().
QString dataFile(const QString& name);
QString databasePath();
QString statisticsPath();
// PDFs and their page images, and package pictures; both end with a slash.
QString tempDir();
QString cacheDir();
// The downloaded database archive while it is unpacked.
QString archivePath();
// The log: the current directory of a portable program, as it always was.
QString logPath();
// A downloaded program installer with the service's (checked) file name.
QString installerPath(const QString& name);
// A tool that came with the program, e.g. "pdfinfo" (".exe" on Windows).
QString bundledToolPath(const QString& file);

// The starter base a package ships, in share/quillard beside the program's bin/.
QString starterDatabasePath();
// Copies the starter base into an installed program's data folder when the
// user has no base yet. True when the user has a base afterwards.
bool provideStarterDatabase();

// The local socket name that a second start of the same user reaches; users
// of one computer each run their own program.
QString instanceKey();

} // namespace AppDir
