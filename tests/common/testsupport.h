#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class MainWindow;
class Simulator;

// Helpers shared by the tests.
namespace TestSupport {

// Writes a new SQLite file at `path` from `sql`, one statement per ";" that
// ends a line. Failing statements are logged; returns whether all ran.
bool buildDatabase(const QString& path, const QString& sql);

// Every table of the drug database, empty, for fixtures to fill.
QString drugSchema();

// Makes `dir` the program folder, with a fresh copy of the build's demo database.
bool useDemoDatabase(const QString& dir);

// A main window over a fresh copy of the demo database in `dir`, with the
// simulator offering that base as current on the build's port; returned once its
// start-up checks are over (which wire the scanner), null if they never end.
std::unique_ptr<MainWindow> demoWindow(const QString& dir, Simulator& simulator);

// Waits until `done` holds for as long as `progress` keeps changing: a busy
// machine may slow a test down as much as it likes, and only `stallMs` without
// any progress ends the wait. Returns whether `done` came to hold.
bool waitWhileProgressing(const std::function<bool()>& done, const std::function<qint64()>& progress,
                          int stallMs = 30000);

// Waits until the drug page under `root` has filled the tabs behind its
// information tab, which it does a frame after the scanned drug is drawn.
// The queued signals of a scan are delivered first.
bool waitForHiddenTabs(QObject* root);

// Limits the size of every file this process writes from now on, as a full
// disk would: a write past `bytes` fails (EFBIG) instead of ending the process.
// A negative `bytes` lifts the limit. Returns whether the limit holds.
bool limitFileSize(qint64 bytes);

} // namespace TestSupport
