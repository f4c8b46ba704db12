#include "DebugLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include <cstdio>

namespace kb {

namespace {

struct ActiveLog
{
    DebugLog::Target target = DebugLog::Target::Off;
    std::unique_ptr<QFile> file;
};

ActiveLog& activeLog()
{
    static ActiveLog log;
    return log;
}

} // namespace

DebugLog DebugLog::fromArguments(const QStringList& arguments)
{
    DebugLog result;
    const QStringList first = arguments.mid(0, 3);
    QStringList upper;
    for (const QString& a : first)
        upper.append(a.toUpper());
    if (!upper.join(QLatin1Char('\n')).contains(QLatin1String("CODESITE")))
        return result;
    QString folder;
    const QString pathKey = QStringLiteral("CODESITEPATH=");
    for (qsizetype i = 0; i < upper.size(); ++i) {
        const qsizetype at = upper[i].indexOf(pathKey);
        if (at >= 0)
            folder = first[i].mid(at + pathKey.size()); // the folder as typed, not in upper case
    }
    for (const QString& a : upper) {
        if (a.contains(QLatin1String("=ON")))
            result.m_target = Target::Stream;
        else if (a.contains(QLatin1String("=FILE")))
            result.m_target = Target::File;
    }
    if (result.m_target == Target::File)
        result.m_filePath =
            QDir(folder.isEmpty() ? QDir::homePath() : folder).filePath(QStringLiteral("Kettlebrook.CSL"));
    return result;
}

QString DebugLog::destinationMessage() const
{
    return QStringLiteral("CodeSite Destination: File[Path=") + QDir::toNativeSeparators(m_filePath) +
           QLatin1Char(']');
}

void DebugLog::install()
{
    ActiveLog& active = activeLog();
    active.target = m_target;
    active.file.reset();
    if (m_target == Target::File) {
        active.file = std::make_unique<QFile>(m_filePath);
        if (!active.file->open(QIODevice::Append | QIODevice::Text)) {
            active.file.reset();
            active.target = Target::Off;
        }
    }
}

void DebugLog::log(const QString& text)
{
    ActiveLog& active = activeLog();
    if (active.target == Target::Off)
        return;
    const QString line =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz ")) + text + QLatin1Char('\n');
    if (active.target == Target::Stream) {
        std::fputs(line.toLocal8Bit().constData(), stderr);
        return;
    }
    active.file->write(line.toUtf8());
    active.file->flush();
}

} // namespace kb
