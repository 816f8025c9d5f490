#pragma once

#include <QString>

// The installation's key for the services, "{xxxxxxxx-xxxx-...}" with its
// braces. Made and stored once, the first time it is asked for, then kept for
// the life of the settings store. Call after the application's names are set.
QString ensureAppKey();
