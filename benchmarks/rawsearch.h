#pragma once

#include <QString>
#include <QStringList>

struct sqlite3;

// The search statement on the bare SQLite library, without Qt: the limit of
// the keystroke figure. SQLite's own upper() and LIKE, so only ASCII folds.
class RawSearch {
public:
    explicit RawSearch(const QString& path);
    ~RawSearch();
    RawSearch(const RawSearch&) = delete;
    RawSearch& operator=(const RawSearch&) = delete;

    bool isOpen() const { return connection != nullptr; }
    // Steps through the rows of `words` and reads their eleven columns; the row count.
    int run(const QStringList& words, int limit);

private:
    sqlite3* connection = nullptr;
};
