#pragma once

#include <QList>
#include <QPixmap>
#include <QTextDocument>
#include <QWidget>

class QPushButton;
class QTextEdit;
class QVBoxLayout;

// The content of one description section: its text at a height measured once,
// and "Drukuj", which lays the text out on A4 pages and opens them in a viewer.
class DescrTab : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DescrTab)

public:
    // `text` is an HTML fragment; the parent's width sets the text's width.
    DescrTab(const QString& title, const QString& text, QWidget* parent);

    // Shows another section's text, measured against `width` as the
    // constructor measures against its parent's width.
    void setContent(const QString& title, const QString& text, int width);

    void search(const QString& phrase);
    // The style of the text and its print button, set once on the frame that
    // holds the sections rather than parsed again for each of them.
    static QString containerStyleSheet();
    // The selected drug's data, the title and the text on A4 pages, one image
    // a page; none without a selected drug.
    QList<QPixmap> printPages();

private slots:
    void on_printButton_clicked();

private:
    QVBoxLayout* layout = nullptr;
    QTextEdit* textEdit = nullptr;
    QPushButton* printButton = nullptr;
    QString title;
    QString text;
    // The font the text is measured in, the edit's own before its larger one.
    QFont measureFont;
    QTextDocument printDocument;
};
