#include "buildconfig.h"
#include "messageboxanswerer.h"
#include "settings/usersettingsform.h"
#include "settingskeys.h"
#include "simulator.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QtTest>

namespace {
const QString userPath = QStringLiteral("/desktop/registration/update_user_additional.php");
const QString pharmacyPath = QStringLiteral("/desktop/registration/update_user_pharmacy.php");
const QString refusal = QStringLiteral("Serwer odrzucił dane (symulator)");

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
    void initTestCase();
    void fill_data();
    void fill();
    void stageButtons_data();
    void stageButtons();
    void save_data();
    void save();

private:
    Simulator simulator;
};

void TestProfileForms::initTestCase()
{
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
}

void TestProfileForms::fill_data()
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

void TestProfileForms::fill()
{
    QFETCH(QString, pharmacy);
    QFETCH(QStringList, shown);

    store(QString(), pharmacy);
    UserSettingsForm form;
    QStringList texts;
    for (const char* name : {"Zip", "Zip2", "PonOpen", "PonClose", "NdClose"})
        texts << child(&form, name)->text();
    QCOMPARE(texts, shown);
}

void TestProfileForms::stageButtons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("button");

    QTest::newRow("Dalej with no name warns") << "" << "NextButton";
    QTest::newRow("pharmacy stage with no name warns") << "" << "pharmacyButton";
    QTest::newRow("hours stage with no name warns") << "" << "hoursButton";
    QTest::newRow("hours reached past an empty pharmacy stage") << "Anna" << "hoursButton";
}

void TestProfileForms::stageButtons()
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

void TestProfileForms::save_data()
{
    QTest::addColumn<QString>("userFault");
    QTest::addColumn<QString>("pharmacyFault");
    QTest::addColumn<int>("pharmacyPosts");

    QTest::newRow("both taken: the form closes") << "none" << "none" << 1;
    QTest::newRow("user refused: pharmacy not sent") << "reject" << "none" << 0;
    QTest::newRow("pharmacy refused") << "none" << "reject" << 1;
    QTest::newRow("user service never answers") << "noanswer" << "none" << 0;
}

void TestProfileForms::save()
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

QTEST_MAIN(TestProfileForms)
#include "tst_profileforms.moc"
