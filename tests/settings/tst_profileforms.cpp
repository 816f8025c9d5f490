#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "messageboxanswerer.h"
#include "settings/openhoursitem.h"
#include "settings/pharmacyselector.h"
#include "settings/usersettingsform.h"
#include "settingskeys.h"
#include "simulator.h"
#include "testsupport.h"

#include <QCheckBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

namespace {
const QString userPath = QStringLiteral("/desktop/registration/update_user_additional.php");
const QString pharmacyPath = QStringLiteral("/desktop/registration/update_user_pharmacy.php");
const QString lookupPath = QStringLiteral("/desktop/registration/user_pharmacy.php");
const QString refusal = QStringLiteral("Serwer odrzucił dane (symulator)");

// Seven days; a Warsaw pharmacy with three numbers, open Monday and Sunday; one
// in Kórnik without hours; a street with an apostrophe; 120 in Radom.
const char* const pharmaciesSql = R"(
INSERT INTO pharmacy_open_hours_type VALUES (1,'Monday','Poniedziałek'),(2,'Tuesday','Wtorek'),(3,'Wednesday','Środa'),
 (4,'Thursday','Czwartek'),(5,'Friday','Piątek'),(6,'Saturday','Sobota'),(7,'Sunday','Niedziela');
INSERT INTO pharmacy VALUES (1,'Apteka Pod Orłem','ul. Długa 1','00-950','Warszawa','111,222;333','orzel@example.pl','');
INSERT INTO pharmacy_open_hours VALUES (1,1,'8:00','20:00'),(1,7,'10:00','14:00');
INSERT INTO pharmacy VALUES (9001,'Apteka Zamkowa','ul. Zamkowa 1','62-035','Kórnik','61 817 00 01','','');
INSERT INTO pharmacy VALUES (3,'Apteka Rumianek','ul. D''Artagnana 5','90-001','Łódź','','','');
WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 219)
 INSERT INTO pharmacy SELECT i, 'Apteka Miejska', 'ul. Polna ' || i, '26-600', 'Radom', '', '', '' FROM n;
)";

template <typename T = QLineEdit>
T* child(QObject* window, const QString& name)
{
    return window->findChild<T*>(name);
}

void click(QWidget* window, const QString& button)
{
    QTest::mouseClick(child<QPushButton>(window, button), Qt::LeftButton);
}

QJsonObject sentBody(Simulator& simulator, const QString& path)
{
    return QJsonDocument::fromJson(simulator.records(path).first()["body"].toString().toUtf8()).object();
}

void store(const QString& user, const QString& pharmacy)
{
    QSettings settings;
    settings.setValue(SettingsKeys::userInfoJson, user);
    settings.setValue(SettingsKeys::pharmacyInfoJson, pharmacy);
}
} // namespace

class TestProfileForms : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                           TestSupport::drugSchema() + QString::fromUtf8(pharmaciesSql)));
        setProgramDir(dir.path());
        QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    }

    void fill_data()
    {
        QTest::addColumn<QString>("pharmacy");
        QTest::addColumn<QStringList>("shown"); // Zip, Zip2, PonOpen, PonClose, NdClose

        QTest::newRow("nothing stored: blank hours, not the defaults") << "" << QStringList{"", "", ":", ":", ":"};
        QTest::newRow("stored text isn't JSON") << "{\"zip\":" << QStringList{"", "", ":", ":", ":"};
        QTest::newRow("zip 00-950") << R"({"zip":"00-950"})" << QStringList{"00", "950", ":", ":", ":"};
        QTest::newRow("zip 950 alone goes to the first field") << R"({"zip":"950"})" << QStringList{"95", "", ":", ":", ":"};
        QTest::newRow("hours by position; the lookup's have no end_hour")
            << R"({"open_hours":[{"start_hour":"8:00","end_hour":"20:00"},{},{},{},{},{},{"start_hour":"14:00"}]})"
            << QStringList{"", "", "8:00", "20:00", ":"};
    }

    void fill()
    {
        QFETCH(QString, pharmacy);

        store(QString(), pharmacy);
        UserSettingsForm form;
        QStringList texts;
        for (const char* name : {"Zip", "Zip2", "PonOpen", "PonClose", "NdClose"})
            texts << child(&form, name)->text();
        QTEST(texts, "shown");
    }

    void stageButtons_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("button");

        QTest::newRow("Dalej with no name warns") << "" << "NextButton";
        QTest::newRow("pharmacy stage with no name warns") << "" << "pharmacyButton";
        QTest::newRow("hours stage with no name warns") << "" << "hoursButton";
        QTest::newRow("hours reached past an empty pharmacy stage") << "Anna" << "hoursButton";
    }

    void stageButtons()
    {
        QFETCH(QString, name);
        QFETCH(QString, button);

        store(QStringLiteral(R"({"surname":"Nowak","login":"anowak"})"), QString());
        UserSettingsForm form;
        child(&form, "Name")->setText(name);
        MessageBoxAnswerer answerer(QStringLiteral("OK"));
        click(&form, button);
        const bool warned = name.isEmpty();
        QTRY_COMPARE(answerer.texts, warned ? QStringList{"Proszę uzupełnić brakujące dane!"} : QStringList());
        QCOMPARE(child<QTabWidget>(&form, "tabWidget")->currentIndex(), warned ? 0 : 2);
        QCOMPARE(child(&form, "Name")->styleSheet().contains("red"), warned);
        QVERIFY(child(&form, "Surname")->styleSheet().isEmpty());
    }

    void save_data()
    {
        QTest::addColumn<QString>("userFault");
        QTest::addColumn<QString>("pharmacyFault");
        QTest::addColumn<int>("pharmacyPosts");

        QTest::newRow("both taken: the form closes") << "none" << "none" << 1;
        QTest::newRow("user refused: pharmacy not sent") << "reject" << "none" << 0;
        QTest::newRow("pharmacy refused") << "none" << "reject" << 1;
        QTest::newRow("user service never answers") << "noanswer" << "none" << 0;
    }

    void save()
    {
        QFETCH(QString, userFault);
        QFETCH(QString, pharmacyFault);
        QFETCH(int, pharmacyPosts);

        QVERIFY(simulator.reset());
        QVERIFY(simulator.setFault(userPath, userFault));
        QVERIFY(simulator.setFault(pharmacyPath, pharmacyFault));
        store(QStringLiteral(R"({"name":"Anna","surname":"Nowak","login":"anowak"})"),
              QStringLiteral(R"({"zip":"00-950","open_hours":[{"start_hour":"8:00","end_hour":"20:00"}]})"));
        QPointer<UserSettingsForm> form = new UserSettingsForm;
        form->show();
        MessageBoxAnswerer answerer(QStringLiteral("OK"));
        click(form, "hoursButton");
        click(form, "FinnishButton");

        QTRY_COMPARE(simulator.records(userPath).size(), 1);
        if (userFault == "reject" || pharmacyFault == "reject")
            QTRY_COMPARE(answerer.texts, QStringList{refusal});
        else if (userFault == "none")
            QTRY_VERIFY(form.isNull());
        QCOMPARE(sentBody(simulator, userPath).value("login").toString(), QStringLiteral("anowak"));
        QCOMPARE(simulator.records(pharmacyPath).size(), pharmacyPosts);
        if (pharmacyPosts) {
            const QJsonObject pharmacy = sentBody(simulator, pharmacyPath);
            QCOMPARE(pharmacy.value("zip").toString(), QStringLiteral("00-950"));
            QCOMPARE(QJsonDocument(pharmacy.value("open_hours").toArray()[0].toObject()).toJson(QJsonDocument::Compact),
                     QByteArray(R"({"end_hour":"20:00","start_hour":"8:00","type_id":"1"})"));
        }
        if (form) {
            // The form stays usable: "Zapisz" sends again.
            click(form, "FinnishButton");
            QTRY_COMPARE(simulator.records(userPath).size(), 2);
            delete form;
        }
    }

    void hours_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("red");

        QTest::newRow("8:00") << "8:00" << false;
        QTest::newRow("08:00") << "08:00" << false;
        QTest::newRow("24:00") << "24:00" << true;
        QTest::newRow("8:60") << "8:60" << true;
    }

    void hours()
    {
        QFETCH(QString, text);
        QFETCH(bool, red);

        OpenHoursItem item(QStringLiteral("9:00"), nullptr);
        item.findChild<QLineEdit*>()->setText(text);
        QCOMPARE(item.findChild<QLineEdit*>()->styleSheet().contains("red"), red);
        QCOMPARE(item.hours(), text);
    }

    void lookupSend_data()
    {
        QTest::addColumn<QStringList>("typed"); // none: a new pharmacy typed in
        QTest::addColumn<int>("rows"); // found; a single one is picked
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("phone"); // as sent; null: nothing sent
        QTest::addColumn<int>("id"); // -1: no nw_pharmacy_id
        QTest::addColumn<QByteArray>("monday");

        QTest::newRow("known pharmacy: three numbers, closing hour under start_hour")
            << QStringList{"Warszawa"} << 1 << "none" << "111,222,333" << 1
            << QByteArray(R"({"start_hour":"20:00","type_id":"1"})");
        QTest::newRow("pharmacy without hours, found in capitals") << QStringList{"KÓRNIK"} << 1 << "none" << "61 817 00 01"
                                                                   << 9001 << QByteArray(R"({"start_hour":"","type_id":"1"})");
        QTest::newRow("new pharmacy has no id")
            << QStringList() << 0 << "none" << "" << -1 << QByteArray(R"({"start_hour":"","type_id":"1"})");
        QTest::newRow("apostrophe found; refusal shows the service's message")
            << QStringList{"d'art"} << 1 << "reject" << "" << 0 << QByteArray();
        QTest::newRow("100 at most, kept by three letters; nothing picked: closes unsent")
            << QStringList{"Rado", "Rad"} << 100 << "none" << QString() << 0 << QByteArray();
    }

    void lookupSend()
    {
        QFETCH(QStringList, typed);
        QFETCH(int, rows);
        QFETCH(QString, fault);
        QFETCH(QString, phone);

        QVERIFY(simulator.reset());
        QVERIFY(simulator.setFault(lookupPath, fault));
        QPointer<PharmacySelector> selector = new PharmacySelector;
        selector->show();
        MessageBoxAnswerer answerer(QStringLiteral("OK"));
        child<QCheckBox>(selector, "checkBox")->setChecked(typed.isEmpty());
        for (const char* name : {"NameLineEdit", "StreetLineEdit", "ZipLineEdit", "CityLineEdit"})
            child(selector, name)->setText(QStringLiteral("11111"));
        for (const QString& text : typed)
            child(selector, "SearchLineEdit")->setText(text);
        auto* list = child<QListWidget>(selector, "SearchResultsListWidget");
        QCOMPARE(list->count(), rows);
        if (rows == 1)
            list->setCurrentRow(0);
        click(selector, "SubmitButton");

        if (fault == "reject") {
            QTRY_COMPARE(answerer.texts, QStringList{refusal});
            QVERIFY(selector->isVisible());
            delete selector;
            return;
        }
        QTRY_VERIFY(selector.isNull());
        QCOMPARE(simulator.records(lookupPath).size(), int(!phone.isNull()));
        if (phone.isNull())
            return;
        const QJsonObject body = sentBody(simulator, lookupPath);
        QCOMPARE(body.value("phone").toString(), phone);
        QTEST(body.value("nw_pharmacy_id").toInt(-1), "id");
        QTEST(QJsonDocument(body.value("open_hours")[0].toObject()).toJson(QJsonDocument::Compact), "monday");
        QCOMPARE(QSettings().value(SettingsKeys::pharmacyInfoJson).toString(),
                 simulator.records(lookupPath).first()["body"].toString());
    }

    void closedWhileSending_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("fault"); // of the pharmacy's request

        QTest::newRow("Twoje dane: the pharmacy is still sent") << "Twoje dane" << "none";
        QTest::newRow("Twoje dane: the refusal is still shown") << "Twoje dane" << "reject";
        QTest::newRow("Apteki: the pharmacy is still sent") << "Apteki" << "none";
        QTest::newRow("Apteki: the refusal is still shown") << "Apteki" << "reject";
    }

    // Regression: a form closed at once after "Zapisz" was deleted with its
    // requests, so the pharmacy was never sent nor, for "Twoje dane", stored.
    void closedWhileSending()
    {
        QFETCH(QString, form);
        QFETCH(QString, fault);

        QVERIFY(simulator.reset());
        QSettings().remove(SettingsKeys::pharmacyInfoJson);
        MessageBoxAnswerer answerer(QStringLiteral("OK"));
        QPointer<QWidget> window;
        QString path;
        if (form == QLatin1String("Twoje dane")) {
            store(QStringLiteral(R"({"name":"Anna","surname":"Nowak","login":"anowak"})"),
                  QStringLiteral(R"({"name":"Apteka","street":"Długa 1","city":"Kórnik","zip":"62-035"})"));
            window = new UserSettingsForm;
            // Filled in from the settings; stored again only by the save.
            QSettings().remove(SettingsKeys::pharmacyInfoJson);
            path = pharmacyPath;
            QVERIFY(simulator.setFault(path, fault));
            window->show();
            click(window, "hoursButton");
            click(window, "FinnishButton");
        } else {
            window = new PharmacySelector;
            path = lookupPath;
            QVERIFY(simulator.setFault(path, fault));
            window->show();
            child<QCheckBox>(window, "checkBox")->setChecked(true);
            for (const char* name : {"NameLineEdit", "StreetLineEdit", "ZipLineEdit", "CityLineEdit"})
                child(window, name)->setText(QStringLiteral("11111"));
            click(window, "SubmitButton");
        }
        window->close();

        QTRY_COMPARE(simulator.records(path).size(), 1);
        QCOMPARE(QSettings().value(SettingsKeys::pharmacyInfoJson).toString(),
                 simulator.records(path).first()["body"].toString());
        if (fault == QLatin1String("reject"))
            QTRY_COMPARE(answerer.texts, QStringList{refusal});
        QTRY_VERIFY(window.isNull());
        QCOMPARE(answerer.texts.size(), int(fault == QLatin1String("reject")));
    }

private:
    QTemporaryDir dir;
    Simulator simulator;
};

QTEST_MAIN(TestProfileForms)
#include "tst_profileforms.moc"
