#pragma once

#include <QString>

// The folder "beside the program": the database, temp/, cache/ and the
// statistics store live here. Tests point it at a folder of their own.
QString programDir();
void setProgramDir(const QString& path);
