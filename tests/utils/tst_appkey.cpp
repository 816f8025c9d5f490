#include "settingskeys.h"
#include "utils/appkey.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

class TestAppKey : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
        QCoreApplication::setApplicationName(QStringLiteral("Quillard"));
    }

    void init()
    {
        QSettings settings;
        settings.clear();
        settings.sync();
    }

    void ensureAppKey_data()
    {
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QString>("storedKey");
        QTest::addColumn<bool>("kept");

        QTest::newRow("first start") << false << "" << false;
        QTest::newRow("empty value replaced") << true << "" << false;
        QTest::newRow("existing key kept") << true << "{6f9619ff-8b86-d011-b42d-00c04fc964ff}" << true;
    }

    void ensureAppKey()
    {
        QFETCH(bool, stored);
        QFETCH(QString, storedKey);
        QFETCH(bool, kept);
        if (stored)
            QSettings().setValue(SettingsKeys::appKey, storedKey);

        const QString key = ::ensureAppKey();
        if (kept) {
            QCOMPARE(key, storedKey);
        } else {
            const QRegularExpression uuid(
                QStringLiteral("^\\{[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}\\}$"));
            QVERIFY2(uuid.match(key).hasMatch(), qPrintable(key));
        }
        QCOMPARE(QSettings().value(SettingsKeys::appKey).toString(), key);
        QCOMPARE(::ensureAppKey(), key);
    }
};

QTEST_GUILESS_MAIN(TestAppKey)
#include "tst_appkey.moc"
