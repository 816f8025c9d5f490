#include "screenlayout.h"

#include <algorithm>

namespace {
constexpr int wideWindow = 1600;
constexpr int wideLeftColumn = 700;
constexpr int leftColumnMinimum = 400;
// From the screen's right edge to a popup's left edge, and the gaps around it.
constexpr int rightInset = 336;
constexpr int topInset = 9;
constexpr int gap = 9;
constexpr int bubbleStep = 85;
constexpr int bubbleBottomInset = 20;
} // namespace

namespace ScreenLayout {

int leftColumnWidth(int windowWidth)
{
    if (windowWidth >= wideWindow)
        return wideLeftColumn;
    return std::max(leftColumnMinimum, windowWidth * 2 / 5);
}

QPoint gifBubblePosition(const QRect& available, int i)
{
    return {available.right() - rightInset, available.bottom() + 1 - bubbleStep * i - bubbleBottomInset};
}

QRect notificationBoxGeometry(const QRect& available, int rows, int bubbles)
{
    const int top = available.top() + topInset;
    // Above the highest bubble, or above the screen's lower edge when there is none.
    const int bottom = bubbles > 0 ? gifBubblePosition(available, bubbles).y() - gap : available.bottom() + 1 - gap;
    const int wanted = boxHeaderHeight + boxRowHeight * rows;
    const int height = std::max(boxHeaderHeight, std::min(wanted, bottom - top));
    return {available.right() - rightInset, top, popupWidth, height};
}

} // namespace ScreenLayout
