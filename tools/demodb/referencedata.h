#pragma once

#include <QList>

class TableWriter;

// The small tables the drug rows point at: payment levels, refund scopes,
// off-label texts, statuses, form classes, warnings and kinds of GIF decision.
class ReferenceData {
public:
    static void write(TableWriter& writer);

    // Warning ids that have a row in w, split as the warnings tab shows them.
    static QList<int> specialWarningIds();
    static QList<int> foodWarningIds();
    // The food warning that table food lists twice.
    static int doubleListedFoodWarning();

private:
    static void writeLevels(TableWriter& writer);
    static void writeScopes(TableWriter& writer);
    static void writeOffLabel(TableWriter& writer);
    static void writeStatuses(TableWriter& writer);
    static void writeForms(TableWriter& writer);
    static void writeWarnings(TableWriter& writer);
    static void writeGifKinds(TableWriter& writer);
};
