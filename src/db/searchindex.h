#pragma once

#include <QStringList>
#include <QVector>
#include <QtGlobal>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

// The drug search held in memory: the names and EAN codes of one opened drug
// database, in the order in which the search statement visits its rows, so that
// a search finds exactly the statement's rows in the statement's order without
// scanning the file. Names and codes are kept as the folding functions of our
// connections see them (upper() and LIKE's case folding), so "żelaza" finds
// "Żelaza" here as it does in SQL. Immutable once built; any thread may search.
class SearchIndex {
    Q_DISABLE_COPY(SearchIndex)

public:
    // One row of the statement, by the rowids of its package, group and status;
    // a left join that found nothing has none.
    struct Row {
        qint64 package = 0;
        qint64 group = 0;
        qint64 status = 0;
        bool hasGroup = false;
        bool hasStatus = false;
    };

    // Reads every row of `statement`, the search statement without words that
    // also selects v.rowid, g.rowid, xp.rowid and ve.ekd after the drug's eleven
    // columns, on `connection`. Null when it can't run there or `cancelled` turns true.
    static std::unique_ptr<SearchIndex> build(sqlite3* connection, const QString& statement,
                                              const std::atomic<bool>& cancelled);

    // The first `limit` rows that the statement gives for `words`.
    QVector<Row> search(const QStringList& words, int limit) const;

    int rowCount() const { return int(rows.size()); }

private:
    SearchIndex() = default;

    // 128 bits made of the bytes and byte pairs of a text: a text can hold
    // another only if it has all of the other's bits.
    struct Signature {
        quint64 low = 0;
        quint64 high = 0;
        bool holds(const Signature& other) const
        {
            return (low & other.low) == other.low && (high & other.high) == other.high;
        }
    };
    struct Text {
        static constexpr quint32 null = 0xFFFFFFFF;
        quint32 offset = 0;
        quint32 size = null; // a NULL column: LIKE is never true for it
        Signature signature;
    };
    struct IndexRow {
        quint32 package = 0; // into packages
        Text code;
        qint64 group = 0;
        qint64 status = 0;
        bool hasGroup = false;
        bool hasStatus = false;
    };
    struct Package {
        qint64 rowid = 0;
        Text name;
    };
    class Word;

    static Signature signatureOf(const char* text, size_t size);
    Text addText(std::string& buffer, const char* text, size_t size);
    bool nameMatches(const Word& word, const Package& package) const;
    bool codeMatches(const Word& word, const IndexRow& row) const;

    std::string names; // every folded name, one after another, as UTF-8
    std::string codes;
    std::vector<Package> packages;
    std::vector<IndexRow> rows;
};
