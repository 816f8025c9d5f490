#pragma once

#include <QPixmap>
#include <QWidget>

class ImageViewerSource;
class QPrinter;

namespace Ui {
class ImageViewer;
}

// Shows a document page by page, with paging, zoom and printing. A window of its
// own (leaflet, description preview) or a child widget (the GIF tab). The source
// is not owned and must outlive the viewer.
class ImageViewer : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(ImageViewer)

public:
    explicit ImageViewer(QWidget* parent = nullptr);
    ImageViewer(const QString& title, ImageViewerSource* source, float minZoom, float maxZoom,
                QWidget* parent = nullptr);
    ~ImageViewer() override;

    // To be called once the viewer stands.
    void showFirstPage();
    // For a viewer that is a window of its own: deleted when closed, so that its
    // full-size pages don't stay for the rest of the run, and never counted as
    // the last window whose closing would end the program.
    void setFreedOnClose();
    // Adds percent / 100 to the zoom, within the limits.
    void zoomBy(float percent);
    float currentZoom() const;
    int currentPageIndex() const;

    // Every page of the source at full size on `printer`; "Drukuj" asks the
    // print dialog for the printer first.
    void print(QPrinter* printer);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void on_prevButton_clicked();
    void on_nextButton_clicked();
    void on_pushButton_clicked();
    void on_pushButton_2_clicked();
    void on_pushButton_3_clicked();

private:
    void setZoom(float value);
    void rescale();

    Ui::ImageViewer* ui = nullptr;
    ImageViewerSource* source = nullptr;
    QPixmap pixmap;
    int currentPage = 0;
    float minZoom = 0.5f;
    float maxZoom = 4.0f;
    float zoom = 1.0f;
};
