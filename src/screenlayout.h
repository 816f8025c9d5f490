#pragma once

#include <QPoint>
#include <QRect>

// Where the main window's parts and the windows at the corner of the screen go,
// for the screens pharmacies have: from 1280 by 1024 to full HD and above,
// scaled or not. All sizes are in the toolkit's logical pixels.
namespace ScreenLayout {

// Width of the notification box and of a GIF bubble.
constexpr int popupWidth = 326;
// The notification box's name and status, then one row per description section.
constexpr int boxHeaderHeight = 87;
constexpr int boxRowHeight = 34;

// The drug page's left column for a main window this wide: 700 pixels on a
// wide window, at most two fifths of a narrower one, never below 400.
int leftColumnWidth(int windowWidth);

// Top left corner of GIF bubble i of a scan (1 the lowest) on the screen's
// available area: a column at its lower right, 9 pixels between bubbles.
QPoint gifBubblePosition(const QRect& available, int i);

// The notification box for a drug with this many sections and GIF bubbles:
// as high as its rows while that fits above the bubbles, else stopped there.
QRect notificationBoxGeometry(const QRect& available, int rows, int bubbles);

} // namespace ScreenLayout
