#pragma once

#include "db/drug.h"

#include <QList>
#include <QObject>

// The substitutes of the selected drug, ordered by price. Filled by a direct
// connection to the selection, before the page's queued slots read it.
class DrugSubstituteViewModel : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(DrugSubstituteViewModel)

public:
    static DrugSubstituteViewModel* instance();
    static void connectToDrugViewModel();

    QList<Drug> substitutes() const;

    // The order of refund rows and of drugs used for the list.
    static bool priceRowLessThan(const DrugPrice& a, const DrugPrice& b);
    static bool drugLessThan(const Drug& a, const Drug& b);

signals:
    void selectedDrugHasSubstitutes();

public slots:
    void onSelectedDrugChanged(int);

private:
    DrugSubstituteViewModel() = default;

    QList<Drug> substitutesList;
};
