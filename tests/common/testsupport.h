#pragma once

#include <QString>

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

} // namespace TestSupport
