#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstdio>

class QDateTime;
class QMessageLogContext;
class QString;

// The process-wide message handler: every qDebug()/qInfo() line of the program
// goes through it into one append-only file, "log.log" where AppDir says
// (the current directory of a portable program), or to standard error when
// QTDIR is set.
namespace LogHandler {

// Opens the log as the start-up does it: standard error when "QTDIR" is set,
// else AppDir::logPath() for appending. Returns the stream,
// or null when the file can't be opened (lines are then lost silently).
FILE* openLogStream();

// Makes `stream` the destination of the handler; null drops every line.
void setStream(FILE* stream);

// One line as it is written: "yyyy-MM-dd hh:mm:ss Debug: [file:line, function] message\n".
QByteArray formatLine(QtMsgType type, const QMessageLogContext& context, const QString& message,
                      const QDateTime& time);

void messageHandler(QtMsgType type, const QMessageLogContext& context, const QString& message);

} // namespace LogHandler
