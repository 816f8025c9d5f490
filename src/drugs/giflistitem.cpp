#include "giflistitem.h"

#include "urls.h"

GifListItem::GifListItem(QWidget* parent, const QString& date, const QString& path)
    : QToolButton(parent)
    , date(date)
    , path(path)
{
    setIcon(QIcon(QStringLiteral("://icons/pdf-icon")));
    setIconSize(QSize(40, 40));
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setText(date);
    QFont smaller = font();
    smaller.setPointSize(8);
    setFont(smaller);
    setStyleSheet(QStringLiteral("QToolButton {border: 1px solid gray;} "));
    setCursor(Qt::PointingHandCursor);
    connect(this, &QToolButton::clicked, this, &GifListItem::on_toolButton_clicked);
}

void GifListItem::on_toolButton_clicked()
{
    emit gifClicked(imagesUrl + path);
}
