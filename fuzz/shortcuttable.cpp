// Any settings file as the store of the shortcut table: the array "shortcuts"
// of chords and section titles that the dispatcher and the shortcuts window read.

#include "fuzzsupport.h"

#include "settingskeys.h"
#include "utils/shortcutsdispatcher.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QDir>
#include <QKeySequence>
#include <QSettings>

namespace {

void writeStore(const QByteArray& text)
{
    const QString path = QSettings().fileName();
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    FUZZ_REQUIRE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
    // The store is read again only when its time or size changed; inputs come
    // faster than the clock ticks. Flushed first, or the buffered write that
    // the close makes would stamp the file with the present again.
    file.flush();
    static qint64 second = 0;
    file.setFileTime(QDateTime::fromSecsSinceEpoch(++second), QFileDevice::FileModificationTime);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    writeStore(FuzzSupport::bytes(data, size));

    QList<QPair<QKeySequence, QString>> stored;
    {
        QSettings settings;
        const int count = settings.beginReadArray(SettingsKeys::shortcuts);
        for (int i = 0; i < qMin(count, ShortcutsDispatcher::maxShortcuts); ++i) {
            settings.setArrayIndex(i);
            stored.append({settings.value(SettingsKeys::shortcutKey).value<QKeySequence>(),
                           settings.value(SettingsKeys::shortcutDescription).toString()});
        }
        settings.endArray();
    }

    ShortcutsDispatcher* dispatcher = ShortcutsDispatcher::instance();
    dispatcher->reload(true);

    // Only so many rows are read, whatever size a damaged store claims; a
    // store that claims billions would otherwise hang at every key release.
    // Each section gets the chord of its first row, each chord opens the section of its last.
    for (const auto& entry : qAsConst(stored)) {
        QKeySequence first;
        for (const auto& other : qAsConst(stored)) {
            if (other.second == entry.second) {
                first = other.first;
                break;
            }
        }
        FUZZ_REQUIRE(dispatcher->loadedSequenceFor(entry.second) == first);
    }
    if (!stored.isEmpty()) {
        const QKeySequence chord = stored.first().first;
        QString last;
        for (const auto& entry : qAsConst(stored)) {
            if (entry.first == chord)
                last = entry.second;
        }
        QStringList emitted;
        QObject context;
        QObject::connect(dispatcher, &ShortcutsDispatcher::shortcut, &context,
                         [&](const QString& title) { emitted << title; });
        writeStore(FuzzSupport::bytes(data, size));
        dispatcher->reload(true);
        dispatcher->onShortcut(chord);
        FUZZ_REQUIRE(emitted == (last.isEmpty() ? QStringList() : QStringList{last}));
    }

    // The shortcuts window shows the rows the dispatcher reads (readStored);
    // building its widgets for every input would cost ten times the rest.
    // Read from the store as given: the dispatcher's flag, written back into
    // the array, makes QSettings rewrite a damaged store in its own way.
    writeStore(FuzzSupport::bytes(data, size));
    {
        QSettings settings;
        FUZZ_REQUIRE(ShortcutsDispatcher::readStored(settings).size() == stored.size());
    }
    return 0;
}
