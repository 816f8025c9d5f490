#include "messageboxanswerer.h"
#include "settings/shortcutsettingswindow.h"
#include "settings/shortcutwidget.h"
#include "utils/shortcutsdispatcher.h"

#include <QKeySequenceEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

// The shortcuts window writes the table that the dispatcher reads, through the
// real settings store of the test.
class TestShortcuts : public QObject {
    Q_OBJECT

private slots:
    void tableEmptyUntilTheWindowIsOpened()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
        QSettings().clear();
        ShortcutsDispatcher* dispatcher = ShortcutsDispatcher::instance();
        QSignalSpy fired(dispatcher, &ShortcutsDispatcher::shortcut);
        dispatcher->onShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
        QCOMPARE(dispatcher->sequenceFor(QStringLiteral("Dawkowanie")), QKeySequence());

        ShortcutSettingsWindow first(nullptr);
        dispatcher->onShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
        dispatcher->onShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+D")));
        QCOMPARE(fired, (QList<QList<QVariant>>{{QStringLiteral("Dawkowanie")}}));
    }

    void savedTableIsReadAgainAtEachKey()
    {
        // The reload's "false" lands inside the open array: the top-level flag
        // stays true and a later change of the store is seen at once.
        ShortcutSettingsWindow window(nullptr);
        click(window, "ok");
        ShortcutsDispatcher* dispatcher = ShortcutsDispatcher::instance();
        QCOMPARE(dispatcher->sequenceFor(QStringLiteral("Dawkowanie")), QKeySequence(QStringLiteral("Ctrl+D")));
        QSettings settings;
        QCOMPARE(settings.value(QStringLiteral("refresh_shortcuts")).toBool(), true);
        QCOMPARE(settings.value(QStringLiteral("shortcuts/18/refresh_shortcuts")).toBool(), false);

        settings.setValue(QStringLiteral("shortcuts/3/Shortcut"), QKeySequence(QStringLiteral("F7")));
        settings.sync();
        QCOMPARE(dispatcher->sequenceFor(QStringLiteral("Dawkowanie")), QKeySequence(QStringLiteral("F7")));
        // Defaults then "Zamknij" leave the store; a save drops the stray key.
        click(window, "defaultValues");
        click(window, "close");
        QCOMPARE(settings.value(QStringLiteral("shortcuts/3/Shortcut")).toString(), QStringLiteral("F7"));
        click(window, "ok");
        QVERIFY(!settings.contains(QStringLiteral("shortcuts/18/refresh_shortcuts")));
    }

    void duplicates_data()
    {
        QTest::addColumn<QStringList>("chords"); // for rows 0, 1, 2 of the defaults
        QTest::addColumn<QList<int>>("red");

        // Row 2 takes the default chord of "Uwagi", row 13.
        QTest::newRow("two rows given Ctrl+D") << QStringList{"Ctrl+D", "Ctrl+D", "Ctrl+U"} << QList<int>{0, 1, 2, 13};
        QTest::newRow("two rows cleared") << QStringList{"", "", "Ctrl+D"} << QList<int>{0, 1};
        QTest::newRow("all different") << QStringList{"F1", "F2", "F3"} << QList<int>{};
    }

    void duplicates()
    {
        QFETCH(QStringList, chords);
        QFETCH(QList<int>, red);
        ShortcutSettingsWindow window(nullptr);
        window.show();
        MessageBoxAnswerer answerer(QStringLiteral("Ok"));
        const auto marked = [&window] {
            QList<int> rows;
            for (int i = 0; i < 18; ++i) {
                if (row(window, i)->isDuplicate())
                    rows << i;
            }
            return rows;
        };
        for (int step = 0; step < 2; ++step) {
            // The second save gives the three rows chords of their own.
            for (int i = 0; i < chords.size(); ++i) {
                const QKeySequence chord = step == 0 ? QKeySequence(chords.at(i)) : QKeySequence(Qt::Key_F5 + i);
                row(window, i)->findChild<QKeySequenceEdit*>()->setKeySequence(chord);
            }
            const QString key = QStringLiteral("shortcuts/1/Shortcut");
            const QString before = QSettings().value(key).toString();
            click(window, "ok");
            const bool refused = step == 0 && !red.isEmpty();
            if (refused)
                QTRY_COMPARE(answerer.texts.size(), 1);
            QCOMPARE(marked(), refused ? red : QList<int>{});
            QCOMPARE(window.isVisible(), refused);
            QCOMPARE(QSettings().value(key).toString(), refused ? before : row(window, 0)->keySequence().toString());
        }
        QCOMPARE(answerer.texts.size(), red.isEmpty() ? 0 : 1);
    }

    void typedTwoChordsKeepOne()
    {
        ShortcutWidget widget(QStringLiteral("Dawkowanie"), QKeySequence(QStringLiteral("Ctrl+D")));
        auto* edit = widget.findChild<QKeySequenceEdit*>();
        QTest::keyClick(edit, Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_L, Qt::ControlModifier);
        // The edit reports a typed sequence a second after the last key.
        QTRY_COMPARE(widget.keySequence(), QKeySequence(QStringLiteral("Ctrl+K")));
    }

private:
    static ShortcutWidget* row(ShortcutSettingsWindow& window, int index)
    {
        auto* list = window.findChild<QListWidget*>(QStringLiteral("listWidget"));
        return qobject_cast<ShortcutWidget*>(list->itemWidget(list->item(index)));
    }
    static void click(ShortcutSettingsWindow& window, const char* name)
    {
        window.findChild<QPushButton*>(QLatin1String(name))->click();
    }
};

QTEST_MAIN(TestShortcuts)
#include "tst_shortcuts.moc"
