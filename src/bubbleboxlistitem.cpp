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
    setSection(section, shortcut);
}

BubbleboxListItem::~BubbleboxListItem()
{
    delete ui;
}

QString BubbleboxListItem::text() const
{
    return ui->label->text();
}

void BubbleboxListItem::setSection(const QString& section, const QString& shortcut)
{
    // A row hidden under the mouse never saw it leave.
    if (hovered)
        setTextColour(restingColour);
    hovered = false;
    ui->label->setText(section);
    ui->label_2->setText(shortcut);
    ui->label_2->setVisible(!shortcut.isEmpty());
}

void BubbleboxListItem::setTextColour(const QString& colour)
{
    ui->label->setStyleSheet(labelStyle(700, colour));
    ui->label_2->setStyleSheet(labelStyle(300, colour));
}

void BubbleboxListItem::enterEvent(QEvent* event)
{
    setTextColour(hoverColour);
    hovered = true;
    QWidget::enterEvent(event);
}

void BubbleboxListItem::leaveEvent(QEvent* event)
{
    setTextColour(restingColour);
    hovered = false;
    QWidget::leaveEvent(event);
}
