#include "bubbleboxlistitem.h"
#include "ui_bubbleboxlistitem.h"

#include <QFontMetrics>

namespace {
const QString restingColour = QStringLiteral("#233b56");
// White on the frame's dark blue while the mouse is over the row.
const QString hoverColour = QStringLiteral("rgb(255, 255, 255)");

// The rows' type: 14 px where the title fits, never below 10 px.
constexpr int largestTitleSize = 14;
constexpr int smallestTitleSize = 10;

QString labelStyle(int weight, const QString& colour, int size = largestTitleSize)
{
    return QStringLiteral("font: %1 %3px \"Segoe\"; color: %2; background: transparent;")
        .arg(weight)
        .arg(colour)
        .arg(size);
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
    fitTitle();
}

void BubbleboxListItem::fitTitle()
{
    const int room = ui->label->contentsRect().width();
    QFont font(QStringLiteral("Segoe"));
    font.setWeight(QFont::Bold);
    int size = largestTitleSize;
    for (; size > smallestTitleSize; --size) {
        font.setPixelSize(size);
        if (QFontMetrics(font).horizontalAdvance(ui->label->text()) <= room)
            break;
    }
    if (size == titleSize)
        return;
    titleSize = size;
    setTextColour(hovered ? hoverColour : restingColour);
}

void BubbleboxListItem::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitTitle();
}

void BubbleboxListItem::setTextColour(const QString& colour)
{
    ui->label->setStyleSheet(labelStyle(700, colour, titleSize));
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
