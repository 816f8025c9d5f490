#include "appdir.h"
#include "bubblebox.h"
#include "db/drugdatabase.h"
#include "settings/shortcutsettingswindow.h"
#include "testsupport.h"

#include <QLabel>
#include <QListWidget>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

// Drug 1 has no description; drug 2 has ten sections, the first nine of the
// shortcut table and "Inne informacje", which has no chord.
class TestBubbleBox : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
        QSettings().clear();
        delete new ShortcutSettingsWindow(nullptr);

        QString sql = TestSupport::drugSchema() + QStringLiteral("INSERT INTO v (vid, gid) VALUES (1, 1), (2, 2);\n");
        const auto shortcuts = ShortcutSettingsWindow::defaultShortcuts();
        for (int i = 0; i < 9; ++i)
            sql += QStringLiteral("INSERT INTO z VALUES (2, '%1', 'tekst');\n").arg(shortcuts.at(i).first);
        sql += QStringLiteral("INSERT INTO z VALUES (2, 'Inne informacje', 'tekst');\n");
        setProgramDir(dir.path());
        QVERIFY(TestSupport::buildDatabase(QDir(dir.path()).filePath(DrugDatabase::drugDatabaseName), sql));
    }

    void rows_data()
    {
        QTest::addColumn<QString>("vid");
        QTest::addColumn<int>("height");
        QTest::addColumn<QStringList>("rows"); // the caption's first five letters and the chord

        QTest::newRow("no description") << "1" << 87 << QStringList{};
        QTest::newRow("ten sections, one without a chord")
            << "2" << 427
            << QStringList{"Bezpi Ctrl+B", "Ciąża Ctrl+H", "Dawko Ctrl+D", "Dział Ctrl+J", "Dział Ctrl+N", "Dział Ctrl+R",
                           "Inne  ", "Inter Ctrl+I", "Opis Ctrl+Q", "Ostrz Ctrl+O"};
        // The ten rows stay for a later drug, hidden.
        QTest::newRow("no description after ten") << "1" << 87 << QStringList{};
    }

    void rows()
    {
        QFETCH(QString, vid);
        QFETCH(int, height);
        box.display(drug(vid), 0);
        QVERIFY(box.isVisible());
        QCOMPARE(box.height(), height);
        // In the database's order, which SQLite picks: compared as a set.
        auto* list = box.findChild<QListWidget*>();
        QStringList shown;
        for (int i = 0; i < list->count(); ++i) {
            if (list->isRowHidden(i))
                continue;
            QWidget* row = list->itemWidget(list->item(i));
            auto* chord = row->findChild<QLabel*>(QStringLiteral("label_2"));
            shown << row->findChild<QLabel*>(QStringLiteral("label"))->text().left(5) + QLatin1Char(' ')
                    + (chord->isHidden() ? QString() : chord->text());
        }
        shown.sort();
        QTEST(shown, "rows");
    }

    // The box is kept from drug to drug: the name's type follows each name,
    // back to the largest after a long one.
    void nameTypeFollowsEachDrug_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("largest");

        const QString longName = QStringLiteral("Acidum acetylsalicylicum + Magnesii hydroxidum Polfarmex");
        QTest::newRow("short") << "Apap" << true;
        QTest::newRow("long") << longName << false;
        QTest::newRow("short after long") << "Ibuprom" << true;
        QTest::newRow("long again") << longName << false;
    }

    void nameTypeFollowsEachDrug()
    {
        QFETCH(QString, name);
        QFETCH(bool, largest);
        Drug shown = drug(QStringLiteral("1"));
        shown.name = name;
        box.display(shown, 0);
        auto* label = box.findChild<QLabel*>(QStringLiteral("drug_name"));
        QCOMPARE(label->font().pixelSize() == 24, largest);
        QVERIFY(label->font().pixelSize() >= 14);
        QVERIFY(label->fontMetrics().horizontalAdvance(name) <= label->contentsRect().width() || !largest);
    }

    void mouseHoldsTheBoxAndRowsNameTheirSection()
    {
        box.display(drug(QStringLiteral("2")), 0);
        auto* timer = box.findChild<QTimer*>(QStringLiteral("timer"));
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(&box, &enter);
        QVERIFY(!timer->isActive());
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&box, &leave);
        QVERIFY(timer->isActive() && timer->remainingTime() > 9000);

        QSignalSpy clicked(&box, &BubbleBox::sectionClicked);
        auto* list = box.findChild<QListWidget*>();
        QListWidgetItem* first = list->item(0);
        const QString section = list->itemWidget(first)->findChild<QLabel*>(QStringLiteral("label"))->text();
        emit list->itemClicked(first);
        QCOMPARE(clicked, (QList<QList<QVariant>>{{section}}));
        QVERIFY(!box.isVisible());
    }

private:
    static Drug drug(const QString& vid)
    {
        Drug drug;
        drug.vid = vid;
        drug.name = QStringLiteral("Lek ") + vid;
        return drug;
    }
    QTemporaryDir dir;
    BubbleBox box;
};

QTEST_MAIN(TestBubbleBox)
#include "tst_bubblebox.moc"
