#include "bubbleboxlistitem.h"
#include "ui_bubbleboxlistitem.h"

namespace {
const QString restingColour = QStringLiteral("#233b56");
// White on the frame's dark blue while the mouse is over the row.
const QString hoverColour = QStringLiteral("rgb(255, 255, 255)");

QString labelStyle(int weight, const QString& colour)
{
    return QStringLiteral("font: %1 14px \"Segoe\"; color: %2; background: transparent;").arg(weight).arg(colour);
}
} // namespace

BubbleboxListItem::BubbleboxListItem(const QString& section, const QString& shortcut, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::BubbleboxListItem)
{
    ui->setupUi(this);
    ui->label->setText(section);
    ui->label_2->setText(shortcut);
    if (shortcut.isEmpty())
        ui->label_2->hide();
}

BubbleboxListItem::~BubbleboxListItem()
{
    delete ui;
}

QString BubbleboxListItem::text() const
{
    return ui->label->text();
}

void BubbleboxListItem::setTextColour(const QString& colour)
{
    ui->label->setStyleSheet(labelStyle(700, colour));
    ui->label_2->setStyleSheet(labelStyle(300, colour));
}

void BubbleboxListItem::enterEvent(QEvent* event)
{
    setTextColour(hoverColour);
    QWidget::enterEvent(event);
}

void BubbleboxListItem::leaveEvent(QEvent* event)
{
    setTextColour(restingColour);
    QWidget::leaveEvent(event);
}
