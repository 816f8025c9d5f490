#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

class QSettings;

// Maps the chords of the system-wide key stream to the titles of description
// sections, as the shortcuts window saved them in the settings store.
class ShortcutsDispatcher : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(ShortcutsDispatcher)

public:
    static ShortcutsDispatcher* instance();

    // Rows of the stored table that are read at most. The table has one row per
    // description section; a damaged store may claim billions, read at every key release.
    static constexpr int maxShortcuts = 256;

    // The stored table's rows (at most maxShortcuts), chord and section title.
    // Leaves the array of `settings` open, so that a write lands where the
    // table's reader has always put it.
    static QList<QPair<QKeySequence, QString>> readStored(QSettings& settings);

    // Re-reads the table when forced or when the shortcuts window has saved it.
    void reload(bool force);
    // The chord of a section; empty when the section has none.
    QKeySequence sequenceFor(const QString& description);
    // The same from the table as last read, for a caller that has just reloaded it.
    QKeySequence loadedSequenceFor(const QString& description) const;

signals:
    void shortcut(QString sectionTitle);

public slots:
    void onShortcut(const QKeySequence& seq);

private:
    ShortcutsDispatcher();

    QList<QPair<QKeySequence, QString>> shortcuts;
};
