#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

// Presses the button of the given text on every message box that comes up
// while it lives, and keeps what the boxes said, in order.
class MessageBoxAnswerer : public QObject
{
public:
    explicit MessageBoxAnswerer(const QString& button);

    QStringList texts;
    QString title; // of the last box
};
