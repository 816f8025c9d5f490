#include "searchindex.h"

#include "sqlitefolding.h"

#include <QByteArray>

#include <sqlite3.h>

#include <algorithm>
#include <string_view>

namespace {

// Columns of the statement the index is built from: the drug's eleven, then these.
constexpr int nameColumn = 1;
constexpr int packageColumn = 11;
constexpr int groupColumn = 12;
constexpr int statusColumn = 13;
constexpr int codeColumn = 14;

void appendUtf8(std::string& out, char32_t c)
{
    // Any code point LIKE may compare, malformed input's stand-ins included;
    // the same code point always gives the same bytes, and no encoded code
    // point starts inside another, so byte search is code point search.
    if (c < 0x80) {
        out.push_back(char(c));
    } else if (c < 0x800) {
        out.push_back(char(0xC0 | (c >> 6)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(char(0xE0 | (c >> 12)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else {
        out.push_back(char(0xF0 | ((c >> 18) & 0x07)));
        out.push_back(char(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    }
}

std::string utf8Of(const std::u32string& codePoints)
{
    std::string out;
    out.reserve(codePoints.size());
    for (char32_t c : codePoints)
        appendUtf8(out, c);
    return out;
}

std::u32string codePointsOf(std::string_view text)
{
    std::u32string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int extra = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t c = extra == 0 ? lead : lead & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < text.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        out.push_back(c);
        i += size_t(extra) + 1;
    }
    return out;
}

std::u32string foldedOf(const QByteArray& text)
{
    return SqliteFolding::folded(reinterpret_cast<const unsigned char*>(text.constData()), text.size());
}

QByteArray upperOf(const QByteArray& text)
{
    return SqliteFolding::changedCase(reinterpret_cast<const unsigned char*>(text.constData()), text.size(), true);
}

bool hasWildcard(const std::u32string& text)
{
    return text.find_first_of(U"%_") != std::u32string::npos;
}

} // namespace

// One typed word as the statement compares it: UPPER(name) LIKE UPPER('% ' || word || '%')
// or UPPER(name) LIKE UPPER(word || '%'), or ekd LIKE '%' || word || '%'. Words
// without "%" or "_" are plain byte searches; the rest go through LIKE itself.
class SearchIndex::Word {
public:
    explicit Word(const QString& text)
    {
        const QByteArray word = text.toUtf8();
        startPattern = foldedOf(upperOf(word + '%'));
        innerPattern = foldedOf(upperOf("% " + word + '%'));
        codePattern = foldedOf('%' + word + '%');

        const std::u32string start = startPattern.substr(0, startPattern.size() - 1);
        plainName = !startPattern.empty() && startPattern.back() == U'%' && !hasWildcard(start)
                    && innerPattern == U"% " + start + U"%";
        if (plainName) {
            name = utf8Of(start);
            spacedName = ' ' + name;
            nameSignature = signatureOf(name.data(), name.size());
        }
        const std::u32string inner =
            codePattern.size() >= 2 ? codePattern.substr(1, codePattern.size() - 2) : std::u32string();
        plainCode = codePattern.size() >= 2 && codePattern.front() == U'%' && codePattern.back() == U'%'
                    && !hasWildcard(inner);
        if (plainCode) {
            code = utf8Of(inner);
            codeSignature = signatureOf(code.data(), code.size());
        }
    }

    // Longer words find fewer rows: they go first, so a row fails early.
    size_t weight() const { return plainName ? name.size() : 0; }

    bool plainName = false;
    std::string name;
    std::string spacedName;
    Signature nameSignature;
    std::u32string startPattern;
    std::u32string innerPattern;

    bool plainCode = false;
    std::string code;
    Signature codeSignature;
    std::u32string codePattern;
};

SearchIndex::Signature SearchIndex::signatureOf(const char* text, size_t size)
{
    Signature signature;
    const auto set = [&signature](unsigned bit) {
        if (bit < 64)
            signature.low |= quint64(1) << bit;
        else
            signature.high |= quint64(1) << (bit - 64);
    };
    for (size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        set(byte & 0x3F);
        if (i > 0) {
            const auto before = static_cast<unsigned char>(text[i - 1]);
            set(64 + ((before * 31u + byte * 7u) & 0x3F));
        }
    }
    return signature;
}

SearchIndex::Text SearchIndex::addText(std::string& buffer, const char* text, size_t size)
{
    Text added;
    added.offset = quint32(buffer.size());
    added.size = quint32(size);
    added.signature = signatureOf(text, size);
    buffer.append(text, size);
    return added;
}

std::unique_ptr<SearchIndex> SearchIndex::build(sqlite3* connection, const QString& statement,
                                                const std::atomic<bool>& cancelled)
{
    sqlite3_stmt* query = nullptr;
    const QByteArray sql = statement.toUtf8();
    if (!connection || sqlite3_prepare_v2(connection, sql.constData(), sql.size(), &query, nullptr) != SQLITE_OK) {
        sqlite3_finalize(query);
        return nullptr;
    }

    std::unique_ptr<SearchIndex> index(new SearchIndex);
    int result = SQLITE_ROW;
    for (int count = 0; (result = sqlite3_step(query)) == SQLITE_ROW; ++count) {
        if (count % 1024 == 0 && cancelled.load())
            break;
        const qint64 packageRowid = sqlite3_column_int64(query, packageColumn);
        if (index->packages.empty() || index->packages.back().rowid != packageRowid) {
            Package package;
            package.rowid = packageRowid;
            if (sqlite3_column_type(query, nameColumn) != SQLITE_NULL) {
                const auto* text = sqlite3_column_text(query, nameColumn);
                const QByteArray upper = SqliteFolding::changedCase(text, sqlite3_column_bytes(query, nameColumn), true);
                const std::string key = utf8Of(foldedOf(upper));
                package.name = index->addText(index->names, key.data(), key.size());
            }
            index->packages.push_back(package);
        }
        IndexRow row;
        row.package = quint32(index->packages.size() - 1);
        if (sqlite3_column_type(query, codeColumn) != SQLITE_NULL) {
            const auto* text = sqlite3_column_text(query, codeColumn);
            const std::string key =
                utf8Of(SqliteFolding::folded(text, sqlite3_column_bytes(query, codeColumn)));
            row.code = index->addText(index->codes, key.data(), key.size());
        }
        row.hasGroup = sqlite3_column_type(query, groupColumn) != SQLITE_NULL;
        row.group = sqlite3_column_int64(query, groupColumn);
        row.hasStatus = sqlite3_column_type(query, statusColumn) != SQLITE_NULL;
        row.status = sqlite3_column_int64(query, statusColumn);
        index->rows.push_back(row);
    }
    sqlite3_finalize(query);
    if (result != SQLITE_DONE || cancelled.load())
        return nullptr;
    index->names.shrink_to_fit();
    index->codes.shrink_to_fit();
    index->packages.shrink_to_fit();
    index->rows.shrink_to_fit();
    return index;
}

bool SearchIndex::nameMatches(const Word& word, const Package& package) const
{
    if (package.name.size == Text::null)
        return false;
    const std::string_view key(names.data() + package.name.offset, package.name.size);
    if (!word.plainName) {
        const std::u32string text = codePointsOf(key);
        return SqliteFolding::likeMatches(word.innerPattern, text, 0)
            || SqliteFolding::likeMatches(word.startPattern, text, 0);
    }
    if (!package.name.signature.holds(word.nameSignature))
        return false;
    return key.substr(0, word.name.size()) == word.name || key.find(word.spacedName) != std::string_view::npos;
}

bool SearchIndex::codeMatches(const Word& word, const IndexRow& row) const
{
    if (row.code.size == Text::null)
        return false;
    const std::string_view key(codes.data() + row.code.offset, row.code.size);
    if (!word.plainCode)
        return SqliteFolding::likeMatches(word.codePattern, codePointsOf(key), 0);
    return row.code.signature.holds(word.codeSignature) && key.find(word.code) != std::string_view::npos;
}

QVector<SearchIndex::Row> SearchIndex::search(const QStringList& words, int limit) const
{
    QVector<Row> found;
    std::vector<Word> matchers;
    matchers.reserve(size_t(words.size()));
    for (const QString& word : words)
        matchers.emplace_back(word);
    std::stable_sort(matchers.begin(), matchers.end(),
                     [](const Word& a, const Word& b) { return a.weight() > b.weight(); });

    // A package's name answers once for all of its codes, which follow one another.
    enum : char { unknown, yes, no };
    std::vector<char> nameAnswers(matchers.size(), unknown);
    quint32 package = 0xFFFFFFFF;

    // As in SQL, a negative LIMIT is none.
    for (const IndexRow& row : rows) {
        if (limit >= 0 && found.size() >= limit)
            break;
        if (row.package != package) {
            package = row.package;
            std::fill(nameAnswers.begin(), nameAnswers.end(), unknown);
        }
        bool matches = true;
        for (size_t i = 0; i < matchers.size() && matches; ++i) {
            if (nameAnswers[i] == unknown)
                nameAnswers[i] = nameMatches(matchers[i], packages[package]) ? yes : no;
            matches = nameAnswers[i] == yes || codeMatches(matchers[i], row);
        }
        if (!matches)
            continue;
        Row hit;
        hit.package = packages[package].rowid;
        hit.group = row.group;
        hit.status = row.status;
        hit.hasGroup = row.hasGroup;
        hit.hasStatus = row.hasStatus;
        found.append(hit);
    }
    return found;
}
