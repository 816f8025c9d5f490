// quillard-icons: draws the program's pictures into a folder, as PNG files.
// The output is committed in src/resources/icons; run the target
// regenerate-icons after changing a drawing.

#include "painting.h"
#include "pictures.h"
#include "warningpictograms.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
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

} // namespace

int main(int argc, char* argv[])
{
    // Drawing needs no screen; the offscreen platform keeps the tool usable on a build server.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);

    QTextStream err(stderr);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        err << "Usage: quillard-icons <output folder>\n";
        return 2;
    }
    const QDir outputDir(arguments.at(1));
    if (!QDir().mkpath(outputDir.absolutePath())) {
        err << "Cannot create " << outputDir.absolutePath() << '\n';
        return 1;
    }

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
