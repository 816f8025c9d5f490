#include "keysource.h"

#include "winkeysource.h"

KeySource* KeySource::create(QObject* parent)
{
    return new WinKeySource(parent);
}
