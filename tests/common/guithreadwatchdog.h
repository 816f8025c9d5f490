#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

// The longest time the GUI thread could not serve its events, measured as the
// longest gap between the ticks of a 10 ms timer on it.
class GuiThreadWatchdog : public QObject {
public:
    GuiThreadWatchdog();

    void restart();
    qint64 longestGapMs() const;

private:
    QTimer timer;
    QElapsedTimer sinceTick;
    qint64 longest = 0;
};
