// quillard-icons: draws the program's pictures into a folder, as PNG files.
// The output is committed in src/resources/icons; run the target
// regenerate-icons after changing a drawing. With --hicolor it draws the
// desktop's icon of the program instead, in the sizes of the hicolor theme
// and as SVG (src/resources/hicolor, target regenerate-app-icons).

#include "painting.h"
#include "pictures.h"
#include "warningpictograms.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#ifdef QUILLARD_ICONS_SVG
#include <QSvgGenerator>
#endif
#include <QTextStream>

#include <functional>
#include <vector>

namespace {

struct Picture {
    QString fileName;
    std::function<QImage()> draw;
};

std::vector<Picture> allPictures()
{
    std::vector<Picture> pictures = {
        {QStringLiteral("tray.png"), Pictures::tray},
        {QStringLiteral("splash.png"), Pictures::splash},
        {QStringLiteral("banner_corvane.png"), Pictures::bannerCorvane},
        {QStringLiteral("contact.png"), Pictures::contact},
        {QStringLiteral("znajdz-lek.png"), Pictures::findDrug},
        {QStringLiteral("no-recipe.png"), Pictures::noRecipe},
        {QStringLiteral("placeholderDrugImage.png"), Pictures::placeholderDrugImage},
        {QStringLiteral("trash.png"), Pictures::trash},
        {QStringLiteral("notification_icon.png"), Pictures::notificationIcon},
        {QStringLiteral("print.png"), Pictures::print},
        {QStringLiteral("image.png"), Pictures::image},
        {QStringLiteral("pdf-icon.png"), Pictures::pdfIcon},
        {QStringLiteral("zoom-in.png"), Pictures::zoomIn},
        {QStringLiteral("zoom-out.png"), Pictures::zoomOut},
    };
    for (int id = WarningPictograms::firstId; id <= WarningPictograms::lastId; ++id)
        pictures.push_back({QString::number(id) + QStringLiteral(".png"), [id] { return WarningPictograms::draw(id); }});
    return pictures;
}

// The tray's tile (the mark on its blue square) at each size a desktop asks of
// the hicolor theme; menus use 16 to 48, software centres 128 and 256.
bool writeHicolor(const QDir& outputDir, QTextStream& err)
{
    const int designSize = 256;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString folder = QStringLiteral("%1x%1/apps").arg(size);
        if (!outputDir.mkpath(folder))
            return false;
        QImage image = Painting::canvas(size, size);
        QPainter painter;
        Painting::begin(painter, image, designSize);
        painter.translate(8, 8);
        Painting::drawLogoTile(painter, designSize - 16);
        painter.end();
        const QString path = outputDir.filePath(folder + QStringLiteral("/quillard.png"));
        QImageWriter writer(path, "png");
        writer.setQuality(0);
        if (!writer.write(image.convertToFormat(QImage::Format_ARGB32))) {
            err << "Cannot write " << path << ": " << writer.errorString() << '\n';
            return false;
        }
    }
#ifdef QUILLARD_ICONS_SVG
    if (!outputDir.mkpath(QStringLiteral("scalable/apps")))
        return false;
    QSvgGenerator svg;
    svg.setFileName(outputDir.filePath(QStringLiteral("scalable/apps/quillard.svg")));
    svg.setSize(QSize(designSize, designSize));
    svg.setViewBox(QRect(0, 0, designSize, designSize));
    svg.setTitle(QStringLiteral("Quillard"));
    QPainter painter;
    if (!painter.begin(&svg))
        return false;
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.translate(8, 8);
    Painting::drawLogoTile(painter, designSize - 16);
    painter.end();
#else
    err << "Built without Qt SVG: the scalable icon is not drawn\n";
#endif
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    // Drawing needs no screen; the offscreen platform keeps the tool usable on a build server.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);

    QTextStream err(stderr);
    const QStringList arguments = QCoreApplication::arguments();
    const bool hicolor = arguments.size() == 3 && arguments.at(1) == QLatin1String("--hicolor");
    if (arguments.size() != 2 && !hicolor) {
        err << "Usage: quillard-icons [--hicolor] <output folder>\n";
        return 2;
    }
    const QDir outputDir(arguments.last());
    if (!QDir().mkpath(outputDir.absolutePath())) {
        err << "Cannot create " << outputDir.absolutePath() << '\n';
        return 1;
    }

    if (hicolor)
        return writeHicolor(outputDir, err) ? 0 : 1;

    // "name@2x.png" beside "name.png": Qt takes it on screens scaled above 100 %.
    for (const int scale : {1, 2}) {
        Painting::setScale(scale);
        for (const Picture& picture : allPictures()) {
            QString fileName = picture.fileName;
            if (scale > 1)
                fileName.insert(fileName.lastIndexOf(QLatin1Char('.')), QStringLiteral("@%1x").arg(scale));
            const QString path = outputDir.filePath(fileName);
            QImageWriter writer(path, "png");
            // For PNG the lowest quality is the strongest lossless compression: small committed files.
            writer.setQuality(0);
            if (!writer.write(picture.draw().convertToFormat(QImage::Format_ARGB32))) {
                err << "Cannot write " << path << ": " << writer.errorString() << '\n';
                return 1;
            }
        }
    }
    return 0;
}
