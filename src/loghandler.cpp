#include "loghandler.h"

#include "appdir.h"

#include <QDateTime>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QTextCodec>

#include <cstdlib>

#ifdef Q_OS_WIN
#include <cwchar>
#endif

namespace {

FILE* logStream = nullptr;

// Worker threads log too; a line is written whole under this lock so that two
// threads never interleave inside one line.
QMutex& logMutex()
{
    static QMutex mutex;
    return mutex;
}

const char* typeLabel(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "Debug";
    case QtInfoMsg:
        return "Info";
    case QtWarningMsg:
        return "Warning";
    case QtCriticalMsg:
        return "Critical";
    case QtFatalMsg:
        return "Fatal";
    }
    return "Debug";
}

} // namespace

namespace LogHandler {

FILE* openLogStream()
{
    if (!qgetenv("QTDIR").isEmpty())
        return stderr;
    const QString path = AppDir::logPath();
#ifdef Q_OS_WIN
    return _wfopen(reinterpret_cast<const wchar_t*>(path.utf16()), L"a");
#else
    return std::fopen(QFile::encodeName(path).constData(), "a");
#endif
}

void setStream(FILE* stream)
{
    QMutexLocker locker(&logMutex());
    logStream = stream;
}

QByteArray formatLine(QtMsgType type, const QMessageLogContext& context, const QString& message,
                      const QDateTime& time)
{
    // File names are written through the Windows-1251 codec, as the log has
    // always been read on Polish Windows desktops.
    static QTextCodec* const fileCodec = QTextCodec::codecForName("Windows-1251");
    const QString file = context.file ? QString::fromLatin1(context.file) : QString();
    const QByteArray fileBytes = fileCodec ? fileCodec->fromUnicode(file) : file.toLocal8Bit();

    QByteArray line = time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toLocal8Bit();
    line += ' ';
    line += typeLabel(type);
    line += ": [";
    line += fileBytes;
    line += ':';
    line += QByteArray::number(static_cast<unsigned>(context.line));
    line += ", ";
    line += context.function ? context.function : "";
    line += "] ";
    line += message.toLocal8Bit();
    line += '\n';
    return line;
}

void messageHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const QByteArray line = formatLine(type, context, message, QDateTime::currentDateTime());
    {
        QMutexLocker locker(&logMutex());
        if (logStream) {
            std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), logStream);
            // Flushed at once, so that a crash loses no line.
            std::fflush(logStream);
        }
    }
    if (type == QtFatalMsg)
        std::abort();
}

} // namespace LogHandler
