#include "StressJournal.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace kb::stress {

StressJournal::StressJournal(const QString& path) : m_path(path)
{
    m_fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644);
    if (m_fd < 0)
        throw std::runtime_error("Cannot make the journal " + path.toStdString() + ": " + std::strerror(errno));
}

StressJournal::~StressJournal() { ::close(m_fd); }

void StressJournal::write(const QStringList& words)
{
    // One write(2) per line: a kill cannot leave half a line and a whole one after it.
    const QByteArray line = words.join(u' ').toUtf8() + '\n';
    if (::write(m_fd, line.constData(), size_t(line.size())) != line.size())
        throw std::runtime_error("Cannot write the journal " + m_path.toStdString());
}

QList<QStringList> StressJournal::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray all = file.readAll();
    QList<QStringList> lines;
    qsizetype start = 0;
    for (qsizetype end = all.indexOf('\n'); end >= 0; end = all.indexOf('\n', start)) {
        lines.append(QString::fromUtf8(all.mid(start, end - start)).split(u' ', Qt::SkipEmptyParts));
        start = end + 1;
    }
    return lines;
}

} // namespace kb::stress
