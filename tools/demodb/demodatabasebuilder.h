#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <cstdint>

// Builds the demo drug database into a temporary file beside the output,
// checks it, and only then renames it over the output: a half-written or
// faulty database never stands under the real name.
class DemoDatabaseBuilder {
public:
    enum class Size { Demo, Market, Market10 };

    struct Options {
        QString output;
        std::uint64_t seed = 0;
        Size size = Size::Demo;
        qint64 dataVersion = 0;
    };

    explicit DemoDatabaseBuilder(const Options& options);

    bool build();
    QString error() const { return failure; }
    QMap<QString, int> counts() const { return rowCounts; }

private:
    bool fill(const QString& path);

    Options options;
    QString failure;
    QMap<QString, int> rowCounts;
};
