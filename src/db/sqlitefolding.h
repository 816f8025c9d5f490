#pragma once

class QSqlDatabase;

// SQLite folds only ASCII letters in upper(), lower() and LIKE, so "żelaza"
// would not find "Żelaza" and a pharmacist types in lower case. These replace
// the three on an open connection with versions that fold every letter as the
// toolkit does; the statements themselves stay as they are.
namespace SqliteFolding {

// False when the connection isn't an open SQLite one of this process's SQLite.
bool install(const QSqlDatabase& database);

} // namespace SqliteFolding
