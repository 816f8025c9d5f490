#include "selecteddrugswidget.h"

#include <QPushButton>

SelectedDrugsWidget::SelectedDrugsWidget(QWidget* parent)
    : QWidget(parent)
{
    // A plain QWidget subclass paints its style-sheet background only with this.
    setAttribute(Qt::WA_StyledBackground);
}

void SelectedDrugsWidget::resizeEvent(QResizeEvent* event)
{
    if (auto* button = findChild<QPushButton*>(QStringLiteral("clearDrugs"))) {
        button->move(width() - button->frameGeometry().width() - 20,
                     height() - button->frameGeometry().height() - 85);
    }
    QWidget::resizeEvent(event);
}
