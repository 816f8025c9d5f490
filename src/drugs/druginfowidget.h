#pragma once

#include "db/records.h"
#include "utils/pdfdownloader.h"
#include "utils/qthttpget.h"

#include <QList>
#include <QPixmap>
#include <QString>
#include <QWidget>

class QNetworkReply;
class QPixmap;

namespace Ui {
class DrugInfoWidget;
}

// The first tab of the drug page: names, package picture, prices and
// indications of the selected drug, with its leaflet, the full ChPL, the
// substitutes and the upload of a picture that the service lacks.
class DrugInfoWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugInfoWidget)

public:
    explicit DrugInfoWidget(QWidget* parent = nullptr);
    ~DrugInfoWidget() override;

    // Opens the first GIF decision of the list, if there is one.
    void showFirstGif();
    // Sends the picture in `fileName` as the selected drug's; the upload
    // button's file dialog ends here.
    void sendImage(const QString& fileName);

    // The picture in an answer of the image service, a JSON array whose first
    // object holds it as base64 text under "src"; null when there is none or
    // when it is larger than a package photo can be.
    static QPixmap pictureOf(const QString& answer);
    static constexpr int maxPictureSide = 4096;

signals:
    // What the page asks of the window around it.
    void statusMessage(const QString& text, int milliseconds);
    void statusCleared();
    void substitutesRequested();

private slots:
    void onImageSendResult(QNetworkReply* reply);
    void onDrugImageResult(QNetworkReply* reply);
    void on_pushButton_clicked();
    void on_printButton_clicked();
    void onDrugViewModelSelectedDrugChanged(int);
    void onGifDataClicked(int index);
    void onPDFDownloader_fileReady();
    void onLeafletDownloader_fileReady();
    void onLeafletDownloader_error();
    void on_showFullChPLButton_clicked();
    void on_pushButton_2_clicked();

private:
    void showPicture(const QPixmap& picture);
    void showPlaceholder();
    bool endLeafletRequest();

    QtHttpGet imageSender;
    QtHttpGet imageGetter;
    Ui::DrugInfoWidget* ui = nullptr;
    QList<GifDecision> gifData;
    GifDecision* currentGif = nullptr;
    PDFDownloader pdfDownloader;
    PDFDownloader leafletDownloader;
    // The group whose picture imageGetter is fetching.
    QString requestedGid;
    // A leaflet was asked for and no other drug has been selected since.
    bool leafletRequested = false;
};
