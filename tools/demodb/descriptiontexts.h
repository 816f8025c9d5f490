#pragma once

#include <QString>
#include <QStringList>

class DemoRandom;

// The titles under which the drug data deliver description sections (the
// shortcuts of the program open sections by these exact titles), and HTML
// fragments to fill them.
class DescriptionTexts {
public:
    static const QStringList& titles();
    // An HTML fragment for section `title` of a group of `substance` at `dose`.
    static QString section(const QString& title, const QString& substance, const QString& dose, DemoRandom& random);
};
