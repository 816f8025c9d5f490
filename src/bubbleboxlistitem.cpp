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

QString colourStyle(const QString& colour)
{
    return QStringLiteral("color: %1; background: transparent;").arg(colour);
}

QString chordStyle(const QString& colour)
{
    return QStringLiteral("font: 300 %1px \"Segoe\"; color: %2; background: transparent;")
        .arg(largestTitleSize)
        .arg(colour);
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
    // The title's size is its font, not its style sheet: a new style sheet
    // restyled the row, and the box changes sizes at every scan.
    if (size == titleSize)
        return;
    titleSize = size;
    font.setPixelSize(size);
    ui->label->setFont(font);
}

void BubbleboxListItem::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitTitle();
}

void BubbleboxListItem::setTextColour(const QString& colour)
{
    ui->label->setStyleSheet(colourStyle(colour));
    ui->label_2->setStyleSheet(chordStyle(colour));
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
