#include "keysource.h"

#include "eventfilterkeysource.h"

KeySource* KeySource::create(QObject* parent)
{
    return new EventFilterKeySource(parent);
}
