#pragma once

#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <vector>

// The timings of one figure, in milliseconds.
struct Samples {
    std::vector<double> values;

    void add(double milliseconds) { values.push_back(milliseconds); }
    bool isEmpty() const { return values.empty(); }

    // The value below which `fraction` of the runs lie (nearest rank).
    double at(double fraction) const
    {
        if (values.empty())
            return 0;
        std::vector<double> sorted = values;
        std::sort(sorted.begin(), sorted.end());
        const size_t rank = size_t(fraction * double(sorted.size()) + 0.999999);
        return sorted.at(std::min(sorted.size(), std::max<size_t>(rank, 1)) - 1);
    }
    double median() const { return at(0.5); }
    double p95() const { return at(0.95); }

    QJsonObject toJson() const
    {
        return {{QStringLiteral("runs"), int(values.size())},
                {QStringLiteral("median"), median()},
                {QStringLiteral("p95"), p95()}};
    }
};
