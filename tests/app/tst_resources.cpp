#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QSet>
#include <QTest>

namespace {

constexpr int firstWarningId = 14478650;
constexpr int lastWarningId = 14478716;

} // namespace

class tst_Resources : public QObject {
    Q_OBJECT

private slots:
    void pictureLoads_data();
    void pictureLoads();
    void everyWarningPictogramIsItsOwn();
    void warningOutsideTheSetHasNoPictogram();
};

void tst_Resources::pictureLoads_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");

    QTest::newRow("tray") << QStringLiteral(":/icons/tray") << QSize(256, 256);
    QTest::newRow("splash") << QStringLiteral(":/icons/splash") << QSize(600, 360);
    QTest::newRow("banner") << QStringLiteral(":/icons/banner_corvane") << QSize(400, 120);
    QTest::newRow("empty drug list") << QStringLiteral(":/icons/znajdz-lek") << QSize(300, 200);
    QTest::newRow("empty recipe list") << QStringLiteral(":/icons/no-recipe") << QSize(300, 200);
    QTest::newRow("clear drugs button") << QStringLiteral(":/icons/trash") << QSize(48, 48);
    QTest::newRow("notification box") << QStringLiteral(":/icons/notification_icon") << QSize(76, 76);
    QTest::newRow("print button") << QStringLiteral(":/icons/print") << QSize(48, 48);
    QTest::newRow("picture upload button") << QStringLiteral(":/icons/image") << QSize(48, 48);
    QTest::newRow("drug without picture") << QStringLiteral(":/icons/placeholderDrugImage") << QSize(218, 169);
    QTest::newRow("GIF decision") << QStringLiteral(":/icons/pdf-icon") << QSize(40, 40);
    // The GIF list asks for the document icon with a doubled slash.
    QTest::newRow("GIF decision, doubled slash") << QStringLiteral("://icons/pdf-icon") << QSize(40, 40);
    QTest::newRow("zoom in") << QStringLiteral(":/icons/zoom-in") << QSize(48, 48);
    QTest::newRow("zoom out") << QStringLiteral(":/icons/zoom-out") << QSize(48, 48);
    QTest::newRow("first warning") << QStringLiteral(":/icons/14478650.png") << QSize(64, 64);
    QTest::newRow("last warning") << QStringLiteral(":/icons/14478716.png") << QSize(64, 64);
}

void tst_Resources::pictureLoads()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);

    const QPixmap picture(name);
    QVERIFY2(!picture.isNull(), qPrintable(name));
    QCOMPARE(picture.size(), size);
}

void tst_Resources::everyWarningPictogramIsItsOwn()
{
    QSet<QByteArray> seen;
    for (int id = firstWarningId; id <= lastWarningId; ++id) {
        const QString name = QStringLiteral(":/icons/%1.png").arg(id);
        // The warnings tab tests the name with QFileInfo before it loads the picture.
        QVERIFY2(QFileInfo(name).isFile(), qPrintable(name));
        const QImage image = QImage(name).convertToFormat(QImage::Format_ARGB32);
        QVERIFY2(!image.isNull(), qPrintable(name));
        const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes()));
        QVERIFY2(!seen.contains(pixels), qPrintable(name + QStringLiteral(" looks like another pictogram")));
        seen.insert(pixels);
    }
    QCOMPARE(seen.size(), 67);
}

void tst_Resources::warningOutsideTheSetHasNoPictogram()
{
    QVERIFY(!QFileInfo(QStringLiteral(":/icons/14478649.png")).exists());
    QVERIFY(!QFileInfo(QStringLiteral(":/icons/14478717.png")).exists());
    QVERIFY(!QFileInfo(QStringLiteral(":/icons/99000001.png")).exists());
}

QTEST_MAIN(tst_Resources)
#include "tst_resources.moc"
