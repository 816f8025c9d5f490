#pragma once

#include "drugprice.h"

#include <QList>
#include <QString>

// One drug package as it leaves the database. An empty gid means "not found".
struct Drug {
    QString vid;
    QString name;
    QString status;
    QString inn;
    QString kind;
    QString dose;
    QString box;
    QString company;
    QList<DrugPrice> priceList; // parsed from prices, in the order of its groups
    QString prices;             // the packed refund text as read
    QString iid;
    QString gid;
};
