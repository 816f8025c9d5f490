#pragma once

#include "db/drug.h"

#include <QList>
#include <QObject>

// The drugs chosen in this run, newest first, and the one that is selected.
// Every way of arriving at a drug ends in addDrug().
class DrugViewModel : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(DrugViewModel)

public:
    static DrugViewModel* instance();

    void addDrug(const Drug& drug);
    Drug* firstDrug();
    int drugCount() const;
    // The drug at `index` of the list, newest first; null past either end.
    const Drug* drugAt(int index) const;
    Drug* selectedDrug();
    int selectedDrugIndex() const;
    void selectDrug(int index);
    void selectFirstDrug();
    void clearDrugs();

signals:
    void drugAdded();
    void drugListCleared();
    // The index that the previous selection has in the list as it stands now,
    // or -1 when there was none.
    void selectedDrugChanged(int previous);

private:
    DrugViewModel() = default;

    QList<Drug> drugs;
    Drug* selected = nullptr;
    int selectedIndex = -2;
};
