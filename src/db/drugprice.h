#pragma once

#include <QString>

// One payment level of table xs; "100%" is the full price.
struct RefundLevel {
    QString id;
    QString name;
    QString descr;
};

// The range of indications in which a refund is given (table d).
struct RefundScope {
    QString id;
    QString name;
    QString descr;
};

// Off-label indications in which the refund is also given (table x).
struct OffLabelIndication {
    QString id;
    QString descr;
};

// One refund row of a drug: one group of four fields of the packed v.prices.
struct DrugPrice {
    RefundLevel level;
    QString payment; // as stored: "12,50", "3.20", "x", "-", " " or empty
    RefundScope scope;
    OffLabelIndication offLabel;
};
