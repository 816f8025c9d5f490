#pragma once

#include <QObject>
#include <QString>

// A stream of key events for the keyboard reader, with Windows virtual-key
// codes, the events' own times in milliseconds, and for a released key its
// name as Windows writes it ("Ctrl", "F1", "Num 1"). A source only listens: it
// never keeps a key from the application that has the focus.
class KeySource : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(KeySource)

public:
    // The widest source this platform offers, already listening. Each platform
    // has its own definition of this, chosen by the build.
    static KeySource* create(QObject* parent = nullptr);

    explicit KeySource(QObject* parent = nullptr)
        : QObject(parent)
    {
    }

signals:
    void keyPressed(int vkCode, qint64 timeMs);
    void keyReleased(int vkCode, qint64 timeMs, const QString& keyName);
};
