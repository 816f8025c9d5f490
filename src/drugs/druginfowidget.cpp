#include "druginfowidget.h"
#include "ui_druginfowidget.h"

#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "drugs/priceitem.h"
#include "sharppixmap.h"
#include "urls.h"
#include "utils/appkey.h"
#include "utils/imageviewer.h"
#include "utils/statisticssender.h"
#include "utils/dialogs.h"

#include <QBuffer>
#include <QDateTime>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QFileDialog>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLayout>
#include <QMessageBox>
#include <QNetworkReply>
#include <QPixmap>
#include <QUrl>

namespace {

const QString fullPriceLevel = QStringLiteral("100%");
const QString noIndications = QStringLiteral("Brak wskazań wg ChPL");
const QString placeholderPicture = QStringLiteral(":/icons/placeholderDrugImage");
const QString uploadRefused = QStringLiteral("Nie udało się przesłać zdjęcia.");

// What the picture label shows inside its 9 pixel margin.
constexpr QSize pictureArea(200, 151);

QString cachedPicturePath(const QString& gid)
{
    return AppDir::cacheDir() + gid + QStringLiteral(".png");
}

} // namespace

// Bytes that are no picture count as none, so nothing is cached and the user
// may send one in.
QPixmap DrugInfoWidget::pictureOf(const QString& answer)
{
    const QJsonDocument document = QJsonDocument::fromJson(answer.toUtf8());
    const QString source = document.array().at(0).toObject().value(QStringLiteral("src")).toString();
    if (source.isEmpty())
        return QPixmap();
    QByteArray bytes = QByteArray::fromBase64(source.toLatin1());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    // The size is read from the header before anything is decoded: a few bytes
    // may claim a picture of gigabytes.
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > maxPictureSide || size.height() > maxPictureSide)
        return QPixmap();
    return QPixmap::fromImage(reader.read());
}

DrugInfoWidget::DrugInfoWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugInfoWidget)
{
    ui->setupUi(this);
    // A plain QWidget subclass paints no style sheet background by itself.
    setAttribute(Qt::WA_StyledBackground, true);
    ui->frame->adjustSize();
    ui->label_7->adjustSize();
    // Shown only when they apply: a leaflet coming in, no picture at the
    // service, substitutes to go to.
    ui->leafletLabel->hide();
    ui->pushButton->hide();
    ui->pushButton_2->hide();

    // Children by name, so that their requests can be followed from outside.
    // Members go before the widget's own end deletes its children, so each
    // is destroyed once.
    imageGetter.setParent(this);
    imageGetter.setObjectName(QStringLiteral("imageGetter"));
    imageSender.setParent(this);
    imageSender.setObjectName(QStringLiteral("imageSender"));
    connect(&imageGetter, &QtHttpGet::result, this, &DrugInfoWidget::onDrugImageResult);
    // Queued: the substitutes model fills its list from the same signal first.
    connect(DrugViewModel::instance(), &DrugViewModel::selectedDrugChanged, this,
            &DrugInfoWidget::onDrugViewModelSelectedDrugChanged, Qt::QueuedConnection);
    connect(&pdfDownloader, &PDFDownloader::fileReady, this, &DrugInfoWidget::onPDFDownloader_fileReady);
    connect(&leafletDownloader, &PDFDownloader::fileReady, this, &DrugInfoWidget::onLeafletDownloader_fileReady);
    connect(&leafletDownloader, &PDFDownloader::error, this, &DrugInfoWidget::onLeafletDownloader_error);
    connect(&imageSender, &QtHttpGet::result, this, &DrugInfoWidget::onImageSendResult);

    if (!QDir(AppDir::cacheDir()).exists())
        QDir().mkpath(AppDir::cacheDir());
}

DrugInfoWidget::~DrugInfoWidget()
{
    delete ui;
}

void DrugInfoWidget::onDrugViewModelSelectedDrugChanged(int)
{
    ui->pushButton_2->setVisible(!DrugSubstituteViewModel::instance()->substitutes().isEmpty());

    ui->pushButton->hide();
    ui->printButton->show();
    ui->printButton->setEnabled(true);
    ui->leafletLabel->hide();

    // A document of the drug shown before must not open over the new one.
    leafletRequested = false;
    pdfDownloader.cancel();
    leafletDownloader.cancel();

    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    if (!drug)
        return;

    ui->Name->setText(drug->name);
    ui->Inn->setText(drug->inn);
    ui->Company->setText(drug->company);
    ui->Kind->setText(drug->kind);
    ui->Dose->setText(drug->dose);
    ui->Box->setText(drug->box);

    ui->DrugImage->clear();
    // One look at the drug's own file: listing the cache, which grows by a
    // picture for every drug ever shown, cost more with every day of use.
    QPixmap picture;
    const QFileInfo cached(cachedPicturePath(drug->gid));
    if (cached.isFile())
        picture.load(cached.filePath());
    // A cached file that doesn't load is fetched again, as if it weren't there.
    if (!picture.isNull()) {
        showPicture(picture);
    } else {
        requestedGid = drug->gid;
        imageGetter.get(drugImageUrl + drug->gid);
    }

    ui->Indication->setText(drug->status);

    ui->label_7->setTextFormat(Qt::RichText);
    ui->label_7->setText(DrugDatabase::indicationsById(drug->iid));
    if (ui->label_7->text().isEmpty())
        ui->label_7->setText(noIndications);

    ui->fullPriceFrame->show();
    ui->line->show();

    // The last "100%" row is the full price; a drug without one leaves the
    // previous drug's full price standing. The refund rows of the drug before
    // take the new levels, and the rows left over go: building a row's form
    // anew at every scan cost more than the rest of the tab.
    QLayout* refunds = ui->refundPriceList->layout();
    int used = 0;
    for (const DrugPrice& row : drug->priceList) {
        qDebug() << row.level.name;
        if (row.level.name == fullPriceLevel) {
            ui->fullPriceItem->setData(row);
        } else if (used < refunds->count()) {
            static_cast<PriceItem*>(refunds->itemAt(used++)->widget())->setData(row);
        } else {
            refunds->addWidget(new PriceItem(row, nullptr));
            ++used;
        }
    }
    while (refunds->count() > used) {
        QLayoutItem* item = refunds->takeAt(refunds->count() - 1);
        delete item->widget();
        delete item;
    }

    if (DrugDatabase::leafletPath(drug->vid).isEmpty())
        ui->printButton->hide();

    // Painted on the next frame, once, rather than in the middle of a scan.
    update();
}

void DrugInfoWidget::showPicture(const QPixmap& picture)
{
    // Pictures sent in by users can be photographs of any size; the label shows
    // them whole.
    if (picture.width() > pictureArea.width() || picture.height() > pictureArea.height())
        ui->DrugImage->setPixmap(picture.scaled(pictureArea, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    else
        ui->DrugImage->setPixmap(picture);
}

void DrugInfoWidget::showPlaceholder()
{
    showPicture(sharpPixmap(placeholderPicture));
    ui->pushButton->show();
    update();
}

void DrugInfoWidget::onDrugImageResult(QNetworkReply* reply)
{
    const QString gid = requestedGid;
    const QPixmap picture = reply->error() == QNetworkReply::NoError ? pictureOf(QtHttpGet::replyText(reply))
                                                                     : QPixmap();
    // An answer for a group no longer selected is kept under that group and
    // nothing else: a drug selected meanwhile keeps its own picture.
    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    const bool current = drug && drug->gid == gid;

    if (picture.isNull()) {
        if (current)
            showPlaceholder();
        return;
    }
    QDir().mkpath(AppDir::cacheDir());
    picture.save(cachedPicturePath(gid), "PNG");
    if (current) {
        showPicture(picture);
        update();
    }
}

void DrugInfoWidget::on_pushButton_clicked()
{
    // Opened without waiting, so the scanner and the page go on behind it.
    auto* dialog = new QFileDialog(this, tr("Wybierz zdjęcie"), QStringLiteral("/home/"),
                                   tr("Zdjęcia (*.png *.jpg *.bmp)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& fileName) {
        qDebug() << "Filename" << fileName;
        if (!fileName.isEmpty())
            sendImage(fileName);
    });
    dialog->open();
}

void DrugInfoWidget::sendImage(const QString& fileName)
{
    // A file that doesn't load goes as an empty picture; the service judges it.
    const QImage image(fileName);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");

    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    QJsonObject body;
    body.insert(QStringLiteral("app_key"), ensureAppKey());
    body.insert(QStringLiteral("image"), QString::fromLatin1(bytes.toBase64()));
    body.insert(QStringLiteral("vid"), drug ? drug->vid : QStringLiteral("-1"));
    body.insert(QStringLiteral("send_date"),
                QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    imageSender.post(newDrugImageUrl, QJsonDocument(body).toJson(QJsonDocument::Compact));
}

void DrugInfoWidget::onImageSendResult(QNetworkReply* reply)
{
    if (reply->error() != QNetworkReply::NoError)
        return;
    const QString text = QtHttpGet::replyText(reply);
    qDebug() << "Response" << text;
    const QJsonObject answer = QJsonDocument::fromJson(text.toUtf8()).object();
    if (answer.value(QStringLiteral("status")).toString() == QLatin1String("success"))
        return;
    QString message = answer.value(QStringLiteral("message")).toString();
    // An answer that says nothing still tells the user the picture didn't go.
    if (message.isEmpty())
        message = uploadRefused;
    Dialogs::tell(this, QMessageBox::Information, QString(), message);
}

void DrugInfoWidget::on_printButton_clicked()
{
    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    if (!drug)
        return;
    const QString vid = drug->vid;
    const QString url = leafletServiceUrl + DrugDatabase::leafletPath(vid);
    qDebug() << "Url" << url;

    emit statusMessage(QStringLiteral("Trwa pobieranie ulotki dla leku"), 10000);
    ui->leafletLabel->show();
    ui->printButton->setEnabled(false);

    leafletRequested = true;
    leafletDownloader.download(url, vid, QStringLiteral(".pdf"));
}

// The leaflet asked for has come or failed: the controls are ready for the
// next one. False when no leaflet was waited for (another drug came since).
bool DrugInfoWidget::endLeafletRequest()
{
    if (!leafletRequested)
        return false;
    leafletRequested = false;
    emit statusCleared();
    ui->printButton->setEnabled(true);
    ui->leafletLabel->hide();
    return true;
}

void DrugInfoWidget::onLeafletDownloader_fileReady()
{
    if (!endLeafletRequest())
        return;
    auto* viewer = new ImageViewer(QStringLiteral("Ulotka"), &leafletDownloader, 0.5f, 4.0f, nullptr);
    viewer->setFreedOnClose();
    viewer->showFirstPage();
    viewer->show();
}

void DrugInfoWidget::onLeafletDownloader_error()
{
    // A leaflet that didn't come leaves the button ready for another try.
    endLeafletRequest();
}

void DrugInfoWidget::showFirstGif()
{
    onGifDataClicked(0);
}

void DrugInfoWidget::onGifDataClicked(int index)
{
    if (index < 0 || index >= gifData.size())
        return;
    currentGif = &gifData[index];
    QString path = currentGif->path;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString url = imagesUrl + path;
    qDebug() << "Url = " << url;
    pdfDownloader.download(url, QStringLiteral("gif") + QString::number(currentGif->id), QStringLiteral(".pdf"));
}

void DrugInfoWidget::onPDFDownloader_fileReady()
{
    if (!currentGif)
        return;
    const QString title = currentGif->name + QStringLiteral(" z dnia ") + currentGif->date;
    auto* viewer = new ImageViewer(title, &pdfDownloader, 0.5f, 4.0f, nullptr);
    viewer->setFreedOnClose();
    viewer->showFirstPage();
    viewer->show();
}

void DrugInfoWidget::on_showFullChPLButton_clicked()
{
    const Drug* drug = DrugViewModel::instance()->selectedDrug();
    qDebug() << "Gid" << (drug ? drug->gid : QString()) << "Vid" << (drug ? drug->vid : QString());
    if (!drug)
        return;
    QDesktopServices::openUrl(
        QUrl(fullChplUrl + drug->name + QStringLiteral("=status!!warn!!level!"), QUrl::TolerantMode));
}

void DrugInfoWidget::on_pushButton_2_clicked()
{
    if (const Drug* drug = DrugViewModel::instance()->selectedDrug())
        StatisticsSender::sendSubstituteView(QStringLiteral("button"), drug->vid);
    emit substitutesRequested();
}
