#include "keysource.h"

#include "eventfilterkeysource.h"
#include "x11keysource.h"

#include <QGuiApplication>

KeySource* KeySource::create(QObject* parent)
{
    // Under X the server records the whole session's keys; elsewhere (Wayland,
    // offscreen) only our own windows can be watched.
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        auto* source = new X11KeySource(parent);
        if (source->start())
            return source;
        delete source;
    }
    return new EventFilterKeySource(parent);
}
