#pragma once

#include <QByteArray>

#include <string>

class QSqlDatabase;

// SQLite folds only ASCII letters in upper(), lower() and LIKE, so "żelaza"
// would not find "Żelaza" and a pharmacist types in lower case. These replace
// the three on an open connection with versions that fold every letter as the
// toolkit does; the statements themselves stay as they are.
namespace SqliteFolding {

// False when the connection isn't an open SQLite one of this process's SQLite.
bool install(const QSqlDatabase& database);

// What the installed functions compute, for code that must agree with them
// (the search index): upper()/lower() of UTF-8 text, the code points LIKE
// compares, and LIKE itself over such code points ("%", "_", `escape` 0 for none).
QByteArray changedCase(const unsigned char* text, int size, bool upper);
std::u32string folded(const unsigned char* text, int size);
bool likeMatches(const std::u32string& pattern, const std::u32string& text, char32_t escape);

} // namespace SqliteFolding
