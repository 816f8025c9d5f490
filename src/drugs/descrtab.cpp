#include "descrtab.h"

#include "drugs/drugviewmodel.h"
#include "utils/imageviewer.h"
#include "utils/simpleimageviewersource.h"
#include "utils/statisticssender.h"

#include <QDebug>
#include <QPageSize>
#include <QPainter>
#include <QPushButton>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include <cmath>

namespace {

const QString containerStyle = QStringLiteral(
    "DescrTab QTextEdit#descrText {border: 0px solid transparent;\nbackground-color: white;\ncolor: #737373;\n}\n"
    "DescrTab QPushButton#printButton {\n"
    "\tqproperty-icon: url(:/icons/print);\n"
    "\tbackground-color: white;\n"
    "\tcolor: #295c99;\n"
    "\tborder: 1px solid #295c99;\n"
    "\tborder-radius: 10px;\n"
    "\tmargin: 9px;\n"
    "\tpadding: 6px 12px;\n"
    "}\n"
    "DescrTab QPushButton#printButton:hover {\n"
    "\tbackground-color: #e3502a;\n"
    "\tcolor: white;\n"
    "}\n"
    "DescrTab QPushButton#printButton:pressed {\n"
    "\tbackground-color: #df512c;\n"
    "\tcolor: white;\n"
    "}");

} // namespace

QString DescrTab::containerStyleSheet()
{
    return containerStyle;
}

namespace {

QString fontBlock(const QString& text, const QString& size)
{
    return QStringLiteral("<font size=\"") + size + QStringLiteral("\">") + text + QStringLiteral("</font><br>");
}

// The viewer doesn't own its source: this child of the viewer carries the
// pages, so they go exactly when the viewer goes.
class PrintedPages : public QObject {
public:
    explicit PrintedPages(const QList<QPixmap>& pages)
        : source(pages)
    {
    }

    SimpleImageViewerSource source;
};

// Never shown, so never styled: every text is measured in it as in a new edit.
// It lives as long as the process, as the pages that use it do.
QTextEdit* measuringEdit()
{
    static QTextEdit* edit = new QTextEdit;
    return edit;
}

} // namespace

DescrTab::DescrTab(const QString& title, const QString& text, QWidget* parent)
    : QWidget(parent)
{
    layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    textEdit = new QTextEdit(this);
    measureFont = textEdit->font();

    textEdit->setObjectName(QStringLiteral("descrText"));
    QFont font = measureFont;
    font.setPixelSize(14);
    textEdit->setFont(font);
    textEdit->setReadOnly(true);
    textEdit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    textEdit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    printButton = new QPushButton(QStringLiteral("Drukuj"), this);
    printButton->setObjectName(QStringLiteral("printButton"));
    printButton->setCursor(Qt::PointingHandCursor);

    layout->addWidget(textEdit, 1);
    // At its own width under the text, not stretched across the section.
    layout->addWidget(printButton, 1, Qt::AlignLeft);
    connect(printButton, &QPushButton::clicked, this, &DescrTab::on_printButton_clicked);

    printDocument.setPageSize(QPageSize::size(QPageSize::A4, QPageSize::Point));
    // A printer can't ink the paper's edge: every page keeps about 15 mm free around the text.
    printDocument.setDocumentMargin(42);

    setContent(title, text, parent ? parent->width() : width());
}

void DescrTab::setContent(const QString& title, const QString& text, int width)
{
    this->title = title;
    this->text = text;
    textEdit->setText(text);
    qDebug() << "parent width" << width;
    textEdit->setFixedWidth(width - 100);
    textEdit->document()->setTextWidth(width - 100);

    // Measured as a new, unstyled edit measures: 100 by 30 when its text comes,
    // so that its frame and scroll bar take their room from the width.
    QTextEdit* measure = measuringEdit();
    measure->setMinimumSize(0, 0);
    measure->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    measure->setGeometry(0, 0, 100, 30);
    measure->document()->setDefaultFont(measureFont);
    measure->setText(text);
    measure->setFixedWidth(width - 100);
    measure->document()->setTextWidth(width - 100);
    const QSize size = measure->document()->size().toSize();
    qDebug() << title << "size" << size;

    // Every paragraph, not only the one the cursor stands in.
    QTextCursor all(textEdit->document());
    all.select(QTextCursor::Document);
    QTextBlockFormat justified;
    justified.setAlignment(Qt::AlignJustify);
    all.mergeBlockFormat(justified);

    // Measured before the larger font: the factor covers it, and the text has
    // no scroll bar to fall back on. The button comes on top, or a one-line
    // text would leave it no room.
    setFixedSize(size.width(), static_cast<int>(std::lround(size.height() * 1.75)) + layout->spacing()
                     + printButton->sizeHint().height());
}

void DescrTab::search(const QString& phrase)
{
    // A search marks nothing and opens nothing; it is only counted, and an
    // empty phrase not even that.
    if (!phrase.isEmpty())
        StatisticsSender::sendSearch(phrase, title, QStringLiteral("tab_list"));
}

QList<QPixmap> DescrTab::printPages()
{
    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    if (!drug)
        return {};

    const QString small = QStringLiteral("5");
    printDocument.setHtml(fontBlock(drug->name + QStringLiteral("<br>"), QStringLiteral("12"))
                          + fontBlock(drug->status, small) + fontBlock(drug->company, small)
                          + fontBlock(drug->inn, small) + fontBlock(QStringLiteral("Postać: ") + drug->kind, small)
                          + fontBlock(QStringLiteral("Dawka: ") + drug->dose, small)
                          + fontBlock(QStringLiteral("Opakowanie: ") + drug->box, small)
                          + fontBlock(QStringLiteral("<br>") + title + QStringLiteral(":"), small)
                          + fontBlock(textEdit->document()->toHtml(), small));

    const QSizeF pageSize = printDocument.pageSize();
    QList<QPixmap> pages;
    for (int i = 0; i < printDocument.pageCount(); ++i) {
        QPixmap pixmap(pageSize.toSize());
        pixmap.fill(Qt::white);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.translate(0, -i * pageSize.height());
        printDocument.drawContents(&painter, QRectF(0, i * pageSize.height(), pageSize.width(), pageSize.height()));
        painter.end();
        pages.append(pixmap);
    }
    return pages;
}

void DescrTab::on_printButton_clicked()
{
    const QList<QPixmap> pages = printPages();
    if (pages.isEmpty())
        return;

    auto* printed = new PrintedPages(pages);
    auto* viewer = new ImageViewer(title, &printed->source, 0.5f, 4.0f);
    viewer->setFreedOnClose();
    printed->setParent(viewer);
    viewer->showFirstPage();
    viewer->show();
}
