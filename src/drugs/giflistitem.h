#pragma once

#include <QString>
#include <QToolButton>

// One GIF decision in the row above the document of the GIF tab: a PDF icon
// over the decision's date.
class GifListItem : public QToolButton {
    Q_OBJECT
    Q_DISABLE_COPY(GifListItem)

public:
    GifListItem(QWidget* parent, const QString& date, const QString& path);

signals:
    void gifClicked(QString pdfPath);

private slots:
    void on_toolButton_clicked();

private:
    QString date;
    QString path;
};
