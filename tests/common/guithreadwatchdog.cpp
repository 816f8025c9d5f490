#include "guithreadwatchdog.h"

GuiThreadWatchdog::GuiThreadWatchdog()
{
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(10);
    connect(&timer, &QTimer::timeout, this, [this] {
        longest = qMax(longest, sinceTick.restart());
    });
    restart();
}

void GuiThreadWatchdog::restart()
{
    longest = 0;
    sinceTick.start();
    timer.start();
}

qint64 GuiThreadWatchdog::longestGapMs() const
{
    // A gap still open counts too.
    return qMax(longest, sinceTick.elapsed());
}
