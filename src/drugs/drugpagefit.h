#pragma once

#include <QObject>
#include <QString>

class QSplitter;
class QTabBar;
class QTabWidget;
class QWidget;

// Fits the drug page to the window it is in, from 1280 pixels wide upwards:
// the left column's width, every tab of the drug in view without scrolling,
// and the prices of the information tab one below the other where they would
// be squeezed side by side. A column width that the user drags is kept.
class DrugPageFit : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(DrugPageFit)

public:
    DrugPageFit(QSplitter* splitter, QTabWidget* tabs, QWidget* info, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeSplitter();
    void keepDraggedColumn();
    void fitTabs();
    void stackPrices();

    QSplitter* splitter = nullptr;
    QTabWidget* tabs = nullptr;
    // Kept apart: the filter sees events of the tab widget while it is being
    // destroyed, when asking it for its bar is no longer allowed.
    QTabBar* tabBar = nullptr;
    QWidget* info = nullptr;
    // The left column's width that the user dragged to, 0 for the window's rule.
    int draggedColumn = 0;
    int tabMinimumWidth = -1;
    // The room and the tab texts of the last fit.
    QString lastFitted;
};
