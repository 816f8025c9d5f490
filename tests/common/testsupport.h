#pragma once

#include <QString>

// Helpers shared by the tests.
namespace TestSupport {

// Writes a new SQLite file at `path` from `sql`, one statement per ";" that
// ends a line. Failing statements are logged; returns whether all ran.
bool buildDatabase(const QString& path, const QString& sql);

// Every table of the drug database, empty, for fixtures to fill.
QString drugSchema();

// Makes `dir` the program folder, with a fresh copy of the build's demo database.
bool useDemoDatabase(const QString& dir);

} // namespace TestSupport
