#include "drugsubstituteviewmodel.h"

#include "db/drugdatabase.h"
#include "drugviewmodel.h"

#include <algorithm>
#include <cmath>

namespace {

// A payment as a number; a text that isn't one counts as 0, which means "no price".
double paymentValue(const QString& payment)
{
    QString number = payment;
    number.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double value = number.toDouble(&ok);
    // toDouble reads "nan" too; a NaN would make the orders below inconsistent,
    // and std::sort may then run past the ends of the list.
    return ok && !std::isnan(value) ? value : 0.0;
}

// Rows without a price never come first, rows with one come before them, and
// among priced rows the cheaper leads.
bool cheaperPayment(double a, double b)
{
    if (a == 0.0)
        return false;
    if (b == 0.0)
        return true;
    return b > a;
}

double firstRowPayment(const QList<DrugPrice>& priceList)
{
    const auto first = std::min_element(priceList.cbegin(), priceList.cend(),
                                        DrugSubstituteViewModel::priceRowLessThan);
    return first == priceList.cend() ? 0.0 : paymentValue(first->payment);
}

} // namespace

DrugSubstituteViewModel* DrugSubstituteViewModel::instance()
{
    static DrugSubstituteViewModel* const model = new DrugSubstituteViewModel;
    return model;
}

void DrugSubstituteViewModel::connectToDrugViewModel()
{
    // Direct on purpose: the page's queued slots read the list when they run,
    // so it has to be filled while the signal is being sent.
    connect(DrugViewModel::instance(), &DrugViewModel::selectedDrugChanged, instance(),
            &DrugSubstituteViewModel::onSelectedDrugChanged,
            static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::UniqueConnection));
}

QList<Drug> DrugSubstituteViewModel::substitutes() const
{
    return substitutesList;
}

bool DrugSubstituteViewModel::priceRowLessThan(const DrugPrice& a, const DrugPrice& b)
{
    // Level ids compare as text: "-1" before "1", "10" before "9".
    if (a.level.id < b.level.id)
        return true;
    if (b.level.id < a.level.id)
        return false;
    return cheaperPayment(paymentValue(a.payment), paymentValue(b.payment));
}

bool DrugSubstituteViewModel::drugLessThan(const Drug& a, const Drug& b)
{
    return cheaperPayment(firstRowPayment(a.priceList), firstRowPayment(b.priceList));
}

void DrugSubstituteViewModel::onSelectedDrugChanged(int)
{
    substitutesList.clear();

    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    if (!selected)
        return;

    substitutesList = DrugDatabase::substitutesOf(*selected);
    std::sort(substitutesList.begin(), substitutesList.end(), drugLessThan);
    emit selectedDrugHasSubstitutes();
}
