#include "settings/databaseinfo.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <ctime>

class TestInfoDialogs : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The database's date is shown in local time.
        qputenv("TZ", "UTC");
        tzset();
    }

    void databaseDates_data()
    {
        QTest::addColumn<QString>("dataVersion");
        QTest::addColumn<QString>("listDate");
        QTest::addColumn<QString>("shownVersion");

        QTest::newRow("December 2025 database") << "1764547200" << "2025-12-01" << "2025-12-01";
        QTest::newRow("version not a number") << "v2025" << "" << "1970-01-01";
        QTest::newRow("list date in words") << "1764547200" << "1 grudnia 2025 r." << "2025-12-01";
    }

    void databaseDates()
    {
        QFETCH(QString, dataVersion);
        QFETCH(QString, listDate);

        // Each row shows the window that "Ok" hid in the row before, with the new dates.
        DatabaseInfo::showInfo(dataVersion, listDate);
        QWidget* window = nullptr;
        for (QWidget* candidate : QApplication::topLevelWidgets()) {
            if (candidate->objectName() == QLatin1String("DatabaseInfo")) {
                QVERIFY2(!window, "a second database window");
                window = candidate;
            }
        }
        QVERIFY(window);
        QVERIFY(window->isVisible());
        QTEST(window->findChild<QLabel*>(QStringLiteral("dataVersion"))->text(), "shownVersion");
        QCOMPARE(window->findChild<QLabel*>(QStringLiteral("listDate"))->text(), listDate);
        QTest::mouseClick(window->findChild<QPushButton*>(), Qt::LeftButton);
    }
};

QTEST_MAIN(TestInfoDialogs)
#include "tst_infodialogs.moc"
