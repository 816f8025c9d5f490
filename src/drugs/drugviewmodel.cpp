#include "drugviewmodel.h"

#include <QDebug>

DrugViewModel* DrugViewModel::instance()
{
    // Lives to the end of the process, like the page that listens to it.
    static DrugViewModel* const model = new DrugViewModel;
    return model;
}

void DrugViewModel::addDrug(const Drug& drug)
{
    qDebug() << "Vid :" << drug.vid;
    drugs.prepend(drug);
    // The selected drug moved one row down.
    ++selectedIndex;
    emit drugAdded();

    const int previous = selectedIndex;
    selectedIndex = 0;
    selected = &drugs.first();
    emit selectedDrugChanged(previous);
}

Drug* DrugViewModel::firstDrug()
{
    return drugs.isEmpty() ? nullptr : &drugs.first();
}

int DrugViewModel::drugCount() const
{
    return drugs.size();
}

const Drug* DrugViewModel::drugAt(int index) const
{
    return index >= 0 && index < drugs.size() ? &drugs.at(index) : nullptr;
}

Drug* DrugViewModel::selectedDrug()
{
    return selected;
}

int DrugViewModel::selectedDrugIndex() const
{
    return selectedIndex;
}

void DrugViewModel::selectDrug(int index)
{
    if (index < 0 || index >= drugs.size())
        return;
    const int previous = selectedIndex;
    selectedIndex = index;
    selected = &drugs[index];
    emit selectedDrugChanged(previous);
}

void DrugViewModel::selectFirstDrug()
{
    if (drugs.isEmpty())
        return;
    selectDrug(0);
}

void DrugViewModel::clearDrugs()
{
    drugs.clear();
    emit drugListCleared();
    // selectedIndex is left as it was: the next addDrug reports one past it.
    selected = nullptr;
    emit selectedDrugChanged(-1);
}
