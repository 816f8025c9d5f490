#include "sqlitefolding.h"

#include <QByteArray>
#include <QChar>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QString>
#include <QVariant>

#include <sqlite3.h>

#include <string>

namespace {

// The next code point of UTF-8 text; a malformed byte stands for itself, so
// that no input can stop the match.
char32_t nextCodePoint(const unsigned char*& text, const unsigned char* end)
{
    const unsigned char lead = *text++;
    if (lead < 0x80)
        return lead;
    int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    char32_t codePoint = lead & (0x3F >> extra);
    if (extra == 0)
        return lead;
    while (extra-- > 0 && text < end && (*text & 0xC0) == 0x80)
        codePoint = (codePoint << 6) | (*text++ & 0x3F);
    return codePoint;
}

char32_t folded(char32_t codePoint)
{
    if (codePoint < 0x80)
        return codePoint >= 'A' && codePoint <= 'Z' ? codePoint + ('a' - 'A') : codePoint;
    return QChar::toCaseFolded(uint(codePoint));
}

void fold(const unsigned char* text, int size, std::u32string& result)
{
    result.clear();
    const unsigned char* end = text + size;
    while (text < end)
        result.push_back(folded(nextCodePoint(text, end)));
}

std::u32string foldedText(const unsigned char* text, int size)
{
    return SqliteFolding::folded(text, size);
}

bool isAscii(const unsigned char* text, int size)
{
    for (int i = 0; i < size; ++i) {
        if (text[i] >= 0x80)
            return false;
    }
    return true;
}

template<bool upper>
void changeCase(sqlite3_context* context, int, sqlite3_value** arguments)
{
    const auto* text = sqlite3_value_text(arguments[0]);
    if (!text) {
        sqlite3_result_null(context);
        return;
    }
    const QByteArray result = SqliteFolding::changedCase(text, sqlite3_value_bytes(arguments[0]), upper);
    sqlite3_result_text(context, result.constData(), result.size(), SQLITE_TRANSIENT);
}

} // namespace

bool SqliteFolding::likeMatches(const std::u32string& pattern, const std::u32string& text, char32_t escape)
{
    size_t p = 0;
    size_t t = 0;
    size_t afterPercent = std::u32string::npos;
    size_t textAtPercent = 0;
    while (t < text.size()) {
        if (p < pattern.size()) {
            char32_t wanted = pattern[p];
            size_t step = 1;
            const bool escaped = escape && wanted == escape && p + 1 < pattern.size();
            if (escaped) {
                wanted = pattern[p + 1];
                step = 2;
            }
            if (!escaped && wanted == U'%') {
                afterPercent = ++p;
                textAtPercent = t;
                continue;
            }
            if ((!escaped && wanted == U'_') || wanted == text[t]) {
                p += step;
                ++t;
                continue;
            }
        }
        // Let the last "%" take one more character and try again from there.
        if (afterPercent == std::u32string::npos)
            return false;
        p = afterPercent;
        t = ++textAtPercent;
    }
    while (p < pattern.size() && pattern[p] == U'%' && pattern[p] != escape)
        ++p;
    return p == pattern.size();
}

namespace {

void deleteFoldedPattern(void* pattern)
{
    delete static_cast<std::u32string*>(pattern);
}

// like(pattern, text [, escape]), the function behind "text LIKE pattern".
void like(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    const auto* patternText = sqlite3_value_text(arguments[0]);
    const auto* text = sqlite3_value_text(arguments[1]);
    if (!patternText || !text)
        return; // a NULL result, as SQLite's own LIKE gives
    char32_t escape = 0;
    if (count == 3) {
        const auto* escapeText = sqlite3_value_text(arguments[2]);
        const std::u32string escapeFolded =
            escapeText ? foldedText(escapeText, sqlite3_value_bytes(arguments[2])) : std::u32string();
        if (escapeFolded.size() != 1) {
            sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
            return;
        }
        escape = escapeFolded.front();
    }

    // One buffer per thread for the row's text, which changes with every call.
    thread_local std::u32string rowText;
    fold(text, sqlite3_value_bytes(arguments[1]), rowText);

    // The pattern is the same for every row of a statement: fold it once.
    auto* pattern = static_cast<std::u32string*>(sqlite3_get_auxdata(context, 0));
    if (!pattern) {
        pattern = new std::u32string(foldedText(patternText, sqlite3_value_bytes(arguments[0])));
        sqlite3_set_auxdata(context, 0, pattern, deleteFoldedPattern);
        pattern = static_cast<std::u32string*>(sqlite3_get_auxdata(context, 0));
        if (!pattern) {
            // SQLite drops aux data for a pattern that changes with each row.
            const std::u32string perRow = foldedText(patternText, sqlite3_value_bytes(arguments[0]));
            sqlite3_result_int(context, SqliteFolding::likeMatches(perRow, rowText, escape));
            return;
        }
    }
    sqlite3_result_int(context, SqliteFolding::likeMatches(*pattern, rowText, escape));
}

} // namespace

namespace SqliteFolding {

QByteArray changedCase(const unsigned char* text, int size, bool upper)
{
    // Most names are plain ASCII: they need no trip through UTF-16.
    if (isAscii(text, size)) {
        QByteArray result(reinterpret_cast<const char*>(text), size);
        for (char& c : result) {
            if (upper && c >= 'a' && c <= 'z')
                c = char(c - ('a' - 'A'));
            else if (!upper && c >= 'A' && c <= 'Z')
                c = char(c + ('a' - 'A'));
        }
        return result;
    }
    const QString unicode = QString::fromUtf8(reinterpret_cast<const char*>(text), size);
    return (upper ? unicode.toUpper() : unicode.toLower()).toUtf8();
}

std::u32string folded(const unsigned char* text, int size)
{
    std::u32string result;
    fold(text, size, result);
    return result;
}

bool install(const QSqlDatabase& database)
{
    const QVariant handle = database.driver() ? database.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return false;
    sqlite3* connection = *static_cast<sqlite3* const*>(handle.constData());
    if (!connection)
        return false;
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    return sqlite3_create_function(connection, "upper", 1, flags, nullptr, changeCase<true>, nullptr, nullptr) == SQLITE_OK
        && sqlite3_create_function(connection, "lower", 1, flags, nullptr, changeCase<false>, nullptr, nullptr) == SQLITE_OK
        && sqlite3_create_function(connection, "like", 2, flags, nullptr, like, nullptr, nullptr) == SQLITE_OK
        && sqlite3_create_function(connection, "like", 3, flags, nullptr, like, nullptr, nullptr) == SQLITE_OK;
}

} // namespace SqliteFolding
