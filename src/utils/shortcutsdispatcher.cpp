#include "shortcutsdispatcher.h"

#include "settingskeys.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSettings>

ShortcutsDispatcher* ShortcutsDispatcher::instance()
{
    static ShortcutsDispatcher* dispatcher = new ShortcutsDispatcher;
    return dispatcher;
}

ShortcutsDispatcher::ShortcutsDispatcher()
{
    reload(true);
}

void ShortcutsDispatcher::reload(bool force)
{
    QSettings settings;
    if (!force && !settings.value(SettingsKeys::refreshShortcuts, false).toBool())
        return;

    shortcuts = readStored(settings);
    // Before the start has named the program there is no store to reset the flag
    // in; writing anyway would leave a stray "Unknown Organization" file in the
    // user's settings folder.
    if (QCoreApplication::organizationName().isEmpty())
        return;
    // The array is still open: the false lands under its last entry and the top-level
    // flag stays true, so a saved table is re-read at every key release.
    settings.setValue(SettingsKeys::refreshShortcuts, false);
    settings.sync();
}

QList<QPair<QKeySequence, QString>> ShortcutsDispatcher::readStored(QSettings& settings)
{
    QList<QPair<QKeySequence, QString>> rows;
    const int size = qMin(settings.beginReadArray(SettingsKeys::shortcuts), maxShortcuts);
    for (int i = 0; i < size; ++i) {
        settings.setArrayIndex(i);
        rows.append({settings.value(SettingsKeys::shortcutKey).value<QKeySequence>(),
                     settings.value(SettingsKeys::shortcutDescription).toString()});
    }
    return rows;
}

void ShortcutsDispatcher::onShortcut(const QKeySequence& seq)
{
    reload(false);
    qDebug() << "Sequence:" << seq;
    QString description;
    for (const auto& entry : qAsConst(shortcuts)) {
        if (entry.first == seq)
            description = entry.second;
    }
    qDebug() << "Val:" << description;
    // Every key the user releases arrives here: an unknown chord is the usual case.
    if (!description.isEmpty())
        emit shortcut(description);
}

QKeySequence ShortcutsDispatcher::sequenceFor(const QString& description)
{
    reload(false);
    return loadedSequenceFor(description);
}

QKeySequence ShortcutsDispatcher::loadedSequenceFor(const QString& description) const
{
    for (const auto& entry : shortcuts) {
        if (entry.second == description)
            return entry.first;
    }
    return QKeySequence();
}
