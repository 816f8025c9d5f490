// Any answer of the image service to a package-picture request.

#include "fuzzsupport.h"

#include "drugs/druginfowidget.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString answer = FuzzSupport::replyText(FuzzSupport::bytes(data, size));
    const QPixmap picture = DrugInfoWidget::pictureOf(answer);
    if (picture.isNull())
        return 0;

    // A picture comes only from a non-empty "src" text of the first object of an array.
    const QJsonDocument document = QJsonDocument::fromJson(answer.toUtf8());
    FUZZ_REQUIRE(document.isArray());
    FUZZ_REQUIRE(!document.array().at(0).toObject().value(QStringLiteral("src")).toString().isEmpty());
    // What is cached and shown is a real picture of a size a package photo can have.
    FUZZ_REQUIRE(picture.width() > 0 && picture.height() > 0);
    FUZZ_REQUIRE(picture.width() <= DrugInfoWidget::maxPictureSide && picture.height() <= DrugInfoWidget::maxPictureSide);
    return 0;
}
