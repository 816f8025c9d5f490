#pragma once

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <optional>

class KeySource;

// Tells a barcode scanner's bursts of digits from a person's typing in the
// system-wide key stream, and turns every key released into a key sequence.
// It only listens: every key still goes on to the application that has the focus.
//
// Key codes are Windows virtual-key codes whatever the platform; times are the
// key events' own times in milliseconds, so that a burst is measured at the
// keyboard and not at our event loop.
class KeyboardReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(KeyboardReader)

public:
    // The program's reader, listening to the best key source the platform offers.
    static KeyboardReader* instance();

    // A reader without a key source: events come only through keyDown()/keyUp().
    explicit KeyboardReader(QObject* parent = nullptr);
    ~KeyboardReader() override;

    // Starts and stops listening to the platform's key stream.
    void installHook();
    void removeHook();

    bool isModifierActive() const;

    void keyDown(int vkCode, qint64 timeMs);
    void keyUp(int vkCode, qint64 timeMs, const QString& keyName);

signals:
    void newReading(QString value);
    void shortcut(QKeySequence);
    void escape();

private:
    void noteEvent(qint64 timeMs);
    void makeReading();

    QString buffer;
    int maxInterval = 100;
    KeySource* hook = nullptr;
    bool alt = false;
    bool ctrl = false;
    bool shift = false;
    std::optional<qint64> lastKeyDown;
};
