#pragma once

#include <QString>
#include <QStringList>

namespace kb::stress {

// What one worker has done, one line per piece of work, each written and
// handed to the system before the next begins: after the worker ends, by
// itself or killed, the journal holds every piece of work it saw committed.
// A line is words separated by blanks: the operation's name, then its words.
class StressJournal
{
public:
    // Starts a new, empty journal; throws when the file cannot be made.
    explicit StressJournal(const QString& path);
    ~StressJournal();
    StressJournal(const StressJournal&) = delete;
    StressJournal& operator=(const StressJournal&) = delete;

    void write(const QStringList& words);

    // Every line of a journal, as words; a last line cut short by a kill is left out.
    static QList<QStringList> read(const QString& path);

private:
    int m_fd = -1;
    QString m_path;
};

} // namespace kb::stress
