#include "imageviewer.h"

#include "ui_imageviewer.h"

#include "utils/imageviewersource.h"
#include "utils/keyboardreader.h"

#include <QDebug>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>
#include <memory>

namespace {

// What the scroll area keeps free around the page at a zoom of 1.0.
constexpr int pageMargin = 26;
constexpr float buttonZoomStep = 0.5f;

} // namespace

ImageViewer::ImageViewer(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::ImageViewer)
{
    ui->setupUi(this);
    ui->scrollArea->viewport()->installEventFilter(this);
}

ImageViewer::ImageViewer(const QString& title, ImageViewerSource* source, float minZoom, float maxZoom,
                         QWidget* parent)
    : ImageViewer(parent)
{
    this->source = source;
    this->minZoom = minZoom;
    this->maxZoom = maxZoom;
    if (!title.isEmpty())
        setWindowTitle(title);
}

ImageViewer::~ImageViewer()
{
    delete ui;
}

void ImageViewer::setFreedOnClose()
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
}

void ImageViewer::showFirstPage()
{
    currentPage = 0;
    pixmap = source ? source->page(0) : QPixmap();
    rescale();
    if (source && source->pageCount() > 1) {
        ui->prevButton->setEnabled(false);
        ui->nextButton->setEnabled(true);
        ui->prevButton->show();
        ui->nextButton->show();
    } else {
        ui->prevButton->hide();
        ui->nextButton->hide();
    }
}

void ImageViewer::zoomBy(float percent)
{
    setZoom(zoom + percent / 100.0f);
}

float ImageViewer::currentZoom() const
{
    return zoom;
}

int ImageViewer::currentPageIndex() const
{
    return currentPage;
}

void ImageViewer::print(QPrinter* printer)
{
    if (!source)
        return;
    QPainter painter;
    if (!painter.begin(printer)) {
        qWarning().noquote() << "D/ImageViewer::print | the printer can't be painted on";
        return;
    }
    const QRect paper = printer->pageLayout().paintRectPixels(printer->resolution());
    const int count = source->pageCount();
    for (int i = 0; i < count; ++i) {
        const QPixmap page = source->page(i);
        if (!page.isNull()) {
            // Pages are enlarged by whole factors; the painter scales while
            // drawing, so no enlarged copy of a page is held in memory.
            const int fx = paper.width() / page.width();
            const int fy = paper.height() / page.height();
            painter.drawPixmap(QRect(0, 0, page.width() * fx, page.height() * fy), page, page.rect());
        }
        if (i < count - 1)
            printer->newPage();
    }
    painter.end();
}

bool ImageViewer::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(object, event);
    if (!KeyboardReader::instance()->isModifierActive())
        return false;
    // Kept from the scroll area; being unaccepted, it goes up to wheelEvent().
    event->ignore();
    return true;
}

void ImageViewer::wheelEvent(QWheelEvent* event)
{
    qDebug().noquote() << "D/ImageViewer::wheelEvent | isAccepted = "
                       << (event->isAccepted() ? "true" : "false");
    if (!KeyboardReader::instance()->isModifierActive()) {
        qDebug().noquote() << "D/ImageViewer::wheelEvent | ignored";
        event->ignore();
        return;
    }
    qDebug().noquote() << "D/ImageViewer::wheelEvent | accepted";
    zoomBy(float(std::lround(event->angleDelta().y() * 0.125)));
    event->accept();
}

void ImageViewer::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    rescale();
}

void ImageViewer::on_prevButton_clicked()
{
    if (!source || currentPage <= 0)
        return;
    --currentPage;
    if (currentPage < 1)
        ui->prevButton->setEnabled(false);
    ui->nextButton->setEnabled(true);
    pixmap = source->page(currentPage);
    rescale();
}

void ImageViewer::on_nextButton_clicked()
{
    if (!source || currentPage >= source->pageCount() - 1)
        return;
    ++currentPage;
    if (source->pageCount() - 1 <= currentPage)
        ui->nextButton->setEnabled(false);
    ui->prevButton->setEnabled(true);
    pixmap = source->page(currentPage);
    rescale();
}

void ImageViewer::on_pushButton_clicked()
{
    // Opened without waiting, so the scanner and the page go on behind it. A
    // scan that rebuilds the GIF tab takes the viewer, and the dialog with it, away.
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto* dialog = new QPrintDialog(printer.get(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, printer] { print(printer.get()); });
    dialog->open();
}

void ImageViewer::on_pushButton_2_clicked()
{
    setZoom(zoom + buttonZoomStep);
}

void ImageViewer::on_pushButton_3_clicked()
{
    setZoom(zoom - buttonZoomStep);
}

void ImageViewer::setZoom(float value)
{
    zoom = qBound(minZoom, value, maxZoom);
    rescale();
}

void ImageViewer::rescale()
{
    // The paging buttons stand beside the page inside the scroll area, so
    // their room is kept free too: at 1.0 the whole page shows without scrolling.
    int besidePage = 0;
    for (const QWidget* button : {ui->prevButton, ui->nextButton}) {
        if (!button->isHidden())
            besidePage += button->width() + ui->pageLayout->spacing();
    }
    const int w = ui->scrollArea->width() - pageMargin - besidePage;
    const int h = ui->scrollArea->height() - pageMargin;
    const QSize target(int(std::lround(w * double(zoom))), int(std::lround(h * double(zoom))));

    if (pixmap.isNull() || target.isEmpty()) {
        ui->image->setPixmap(QPixmap());
        return;
    }
    // Smooth: a page shrunk to fit the window loses thin strokes of small
    // print otherwise (the dot of an "i", a colon).
    ui->image->setPixmap(pixmap.scaled(target, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}
