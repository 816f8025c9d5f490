#include "appdir.h"
#include "bubblebox.h"
#include "db/drug.h"
#include "db/drugdatabase.h"
#include "drugs/gifbubble.h"
#include "testsupport.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

// Runs on linuxfb without a frame buffer, so that the system has no screen at
// all, as a Windows session can have between two remote connections.
class TestNoScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(!QGuiApplication::primaryScreen(), "the test needs a platform without screens");
        setProgramDir(dir.path());
        QVERIFY(TestSupport::buildDatabase(QDir(dir.path()).filePath(DrugDatabase::drugDatabaseName),
                                           TestSupport::drugSchema()
                                               + QStringLiteral("INSERT INTO v (vid, gid) VALUES (1, 1);\n")));
    }

    // Regression: both dereferenced a null primary screen and crashed the scan.
    void scanWithoutScreenShowsNothing()
    {
        BubbleBox box;
        Drug drug;
        drug.vid = QStringLiteral("1");
        drug.name = QStringLiteral("Demo");
        box.display(drug, 0);
        QVERIFY(!box.isVisible());

        GifBubble bubble(nullptr);
        bubble.Show(QStringLiteral("a.pdf"), QStringLiteral("a.pdf"), QStringLiteral("2025-01-20"),
                    QStringLiteral("DECYZJA"), 1, QStringLiteral("1"));
        QVERIFY(!bubble.isVisible());
        // It goes at its time like a shown one.
        QVERIFY(bubble.findChild<QTimer*>()->isActive());
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(TestNoScreen)
#include "tst_noscreen.moc"
