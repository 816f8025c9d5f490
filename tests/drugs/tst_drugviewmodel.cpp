#include "drugs/drugviewmodel.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

// The model is a singleton that lives for the whole process: the first test
// sees it as a new run does, the others start from a state they set up.
class TestDrugViewModel : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
    }

    void firstRunOfTheModel()
    {
        DrugViewModel* model = DrugViewModel::instance();
        // The first drug of a run has no previous selection.
        QSignalSpy changed(model, &DrugViewModel::selectedDrugChanged);
        model->addDrug(drug(QStringLiteral("1")));
        model->addDrug(drug(QStringLiteral("2")));
        QCOMPARE(changes(changed), (QList<int>{-1, 1}));
        QCOMPARE(model->selectedDrug()->vid, QStringLiteral("2"));
    }

    void operations_data()
    {
        // Steps: "a<vid>" adds, "s<index>" selects, "f" selects the first, "c" clears.
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QList<int>>("changes");
        QTest::addColumn<int>("clears");
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<int>("selectedIndex");
        QTest::addColumn<QString>("selectedVid");

        // Each row starts from an empty list with selectedIndex 0, so an add
        // reports 1 even when the list was empty.
        QTest::newRow("same drug twice stands twice")
            << "a7 a7" << QList<int>{1, 1} << 0 << QStringList{"7", "7"} << 0 << "7";
        QTest::newRow("select an older drug") << "a1 a2 a3 s2" << QList<int>{1, 1, 1, 0} << 0
                                              << QStringList{"3", "2", "1"} << 2 << "1";
        QTest::newRow("add after a select") << "a1 a2 s1 a3" << QList<int>{1, 1, 0, 2} << 0
                                            << QStringList{"3", "2", "1"} << 0 << "3";
        QTest::newRow("selecting the selected row emits") << "a1 a2 s0" << QList<int>{1, 1, 0} << 0
                                                          << QStringList{"2", "1"} << 0 << "2";
        QTest::newRow("index past the end or below 0 is ignored")
            << "a1 a2 s1 s2 s-1" << QList<int>{1, 1, 0} << 0 << QStringList{"2", "1"} << 1 << "1";
        QTest::newRow("select first") << "a1 a2 s1 f" << QList<int>{1, 1, 0, 1} << 0 << QStringList{"2", "1"} << 0
                                      << "2";
        QTest::newRow("select first of an empty list") << "f" << QList<int>{} << 0 << QStringList{} << 0 << "";
        QTest::newRow("clear of an empty list still emits both")
            << "c" << QList<int>{-1} << 1 << QStringList{} << 0 << "";
        QTest::newRow("clear of three rows keeps the index")
            << "a1 a2 a3 c a4" << QList<int>{1, 1, 1, -1, 1} << 1 << QStringList{"4"} << 0 << "4";
        QTest::newRow("clear after selecting an older drug")
            << "a1 a2 s1 c a3" << QList<int>{1, 1, 0, -1, 2} << 1 << QStringList{"3"} << 0 << "3";
    }

    void operations()
    {
        QFETCH(QString, steps);
        QFETCH(QList<int>, changes);
        QFETCH(QStringList, list);

        DrugViewModel* model = DrugViewModel::instance();
        model->clearDrugs();
        model->addDrug(drug(QStringLiteral("0")));
        model->clearDrugs();
        QCOMPARE(model->selectedDrugIndex(), 0);

        QSignalSpy changed(model, &DrugViewModel::selectedDrugChanged);
        QSignalSpy cleared(model, &DrugViewModel::drugListCleared);
        const QStringList stepList = steps.split(QLatin1Char(' '));
        for (const QString& step : stepList) {
            const QString argument = step.mid(1);
            switch (step.at(0).toLatin1()) {
            case 'a':
                model->addDrug(drug(argument));
                break;
            case 's':
                model->selectDrug(argument.toInt());
                break;
            case 'f':
                model->selectFirstDrug();
                break;
            case 'c':
                model->clearDrugs();
                break;
            default:
                QFAIL("unknown step");
            }
        }

        QCOMPARE(TestDrugViewModel::changes(changed), changes);
        QTEST(cleared.count(), "clears");
        QTEST(model->selectedDrugIndex(), "selectedIndex");
        QTEST(model->selectedDrug() ? model->selectedDrug()->vid : QString(), "selectedVid");
        QCOMPARE(model->firstDrug() ? model->firstDrug()->vid : QString(), list.value(0));
        QStringList actual;
        for (int i = 0; i < model->drugCount(); ++i)
            actual << model->drugAt(i)->vid;
        QCOMPARE(actual, list);
    }

private:
    static Drug drug(const QString& vid)
    {
        Drug drug;
        drug.vid = vid;
        drug.name = QStringLiteral("Lek ") + vid;
        drug.gid = QStringLiteral("100");
        return drug;
    }

    static QList<int> changes(const QSignalSpy& spy)
    {
        QList<int> previous;
        for (const QList<QVariant>& arguments : spy)
            previous << arguments.at(0).toInt();
        return previous;
    }
};

QTEST_GUILESS_MAIN(TestDrugViewModel)
#include "tst_drugviewmodel.moc"
