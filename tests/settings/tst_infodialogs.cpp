#include "settings/contact.h"
#include "settings/databaseinfo.h"
#include "settings/rodoinfo.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <ctime>

namespace {

// The one top-level window of that name; fails the test if there are several.
QWidget* onlyWindow(const char* objectName)
{
    QWidget* found = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() != QLatin1String(objectName))
            continue;
        if (found)
            return nullptr;
        found = window;
    }
    return found;
}

} // namespace

class TestInfoDialogs : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void databaseDates_data();
    void databaseDates();
    void databaseInfoKeepsOneWindow();
    void contactKeepsOneWindow();
    void rodoResult_data();
    void rodoResult();
    void rodoNotice();
};

void TestInfoDialogs::initTestCase()
{
    // The database's date is shown in local time.
    qputenv("TZ", "UTC");
    tzset();
}

void TestInfoDialogs::databaseDates_data()
{
    QTest::addColumn<QString>("dataVersion");
    QTest::addColumn<QString>("listDate");
    QTest::addColumn<QString>("shownVersion");

    QTest::newRow("no version in cfg") << "" << "01.12.2025" << "1970-01-01";
    QTest::newRow("December 2025 database") << "1764547200" << "2025-12-01" << "2025-12-01";
    QTest::newRow("version not a number") << "v2025" << "" << "1970-01-01";
    QTest::newRow("list date in words") << "1764547200" << "1 grudnia 2025 r." << "2025-12-01";
}

void TestInfoDialogs::databaseDates()
{
    QFETCH(QString, dataVersion);
    QFETCH(QString, listDate);
    QFETCH(QString, shownVersion);

    DatabaseInfo::showInfo(dataVersion, listDate);
    QWidget* window = onlyWindow("DatabaseInfo");
    QVERIFY(window);
    QCOMPARE(window->findChild<QLabel*>(QStringLiteral("dataVersion"))->text(), shownVersion);
    QCOMPARE(window->findChild<QLabel*>(QStringLiteral("listDate"))->text(), listDate);
}

void TestInfoDialogs::databaseInfoKeepsOneWindow()
{
    DatabaseInfo::showInfo(QStringLiteral("0"), QStringLiteral("01.01.2025"));
    const QPointer<QWidget> first = onlyWindow("DatabaseInfo");
    QVERIFY(first);
    QVERIFY(first->isVisible());

    // "Ok" only hides the window; the next call shows it again with the new dates.
    QTest::mouseClick(first->findChild<QPushButton*>(), Qt::LeftButton);
    QVERIFY(!first->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first);
    DatabaseInfo::showInfo(QStringLiteral("1764547200"), QStringLiteral("01.12.2025"));
    QCOMPARE(onlyWindow("DatabaseInfo"), first.data());
    QVERIFY(first->isVisible());
    QCOMPARE(first->findChild<QLabel*>(QStringLiteral("dataVersion"))->text(), QStringLiteral("2025-12-01"));
    QCOMPARE(first->findChild<QLabel*>(QStringLiteral("listDate"))->text(), QStringLiteral("01.12.2025"));
}

void TestInfoDialogs::contactKeepsOneWindow()
{
    Contact::showContact();
    const QPointer<QWidget> first = onlyWindow("Contact");
    QVERIFY(first);
    QVERIFY(first->isVisible());
    // The card is the window's only content: a missing picture leaves it blank.
    QVERIFY(!first->findChild<QLabel*>()->pixmap(Qt::ReturnByValue).isNull());

    first->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first);
    Contact::showContact();
    Contact::showContact();
    QCOMPARE(onlyWindow("Contact"), first.data());
    QVERIFY(first->isVisible());
}

void TestInfoDialogs::rodoResult_data()
{
    QTest::addColumn<bool>("viaButton");
    QTest::addColumn<int>("result");

    QTest::newRow("button confirms the notice") << true << int(QDialog::Accepted);
    QTest::newRow("window closed, notice not seen") << false << int(QDialog::Rejected);
}

void TestInfoDialogs::rodoResult()
{
    QFETCH(bool, viaButton);
    QFETCH(int, result);

    RODOInfo dialog(nullptr);
    QTimer::singleShot(0, &dialog, [&dialog, viaButton] {
        if (viaButton)
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("pushButton_2")), Qt::LeftButton);
        else
            dialog.close();
    });
    QCOMPARE(dialog.exec(), result);
}

void TestInfoDialogs::rodoNotice()
{
    RODOInfo dialog(nullptr);
    const QString notice = dialog.findChild<QLabel*>()->text();
    QVERIFY2(notice.startsWith(QStringLiteral("Szanowni Państwo,")), qPrintable(notice.left(40)));
    QVERIFY2(notice.size() > 3500 && notice.size() < 4300, qPrintable(QString::number(notice.size())));
}

QTEST_MAIN(TestInfoDialogs)
#include "tst_infodialogs.moc"
