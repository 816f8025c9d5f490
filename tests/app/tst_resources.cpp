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
    void pictureLoads_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("tray") << QStringLiteral(":/icons/tray");
        QTest::newRow("empty drug list") << QStringLiteral(":/icons/znajdz-lek");
        // The GIF list asks for the document icon with a doubled slash.
        QTest::newRow("GIF decision, doubled slash") << QStringLiteral("://icons/pdf-icon");
    }

    void pictureLoads()
    {
        QFETCH(QString, name);
        QVERIFY2(!QPixmap(name).isNull(), qPrintable(name));
    }

    void everyWarningPictogramIsItsOwn()
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
};

QTEST_MAIN(tst_Resources)
#include "tst_resources.moc"
