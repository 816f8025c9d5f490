#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The active substances of the generated part of the market, with what a
// group of packages of each needs: strengths, forms, a refund scope and the
// indications text.
class SubstancePool {
public:
    struct Substance {
        QStringList names;      // one name, or the names of a fixed combination
        QStringList doses;      // strengths a group may have
        QStringList forms;      // forms of one class (or one form)
        int scope = 0;          // refund scope id, 0 for none
        int status = 0;         // xp id
        QString indication;     // indications text
    };

    static const QList<Substance>& substances();
};
