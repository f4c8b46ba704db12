#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace kb::reports {

// A named source of rows for a report, the contract between the program
// and its templates: a template names pipes and their fields, the program
// hands over pipes of those names.
//
// Rows are numbered from 0 and can be visited in any order. A pipe may
// follow a master pipe: whenever the master stands on another row, the
// pipe re-reads the rows that belong to that row the next time it is used,
// and stands on its first one. Pipes that a band merely refers to (the one
// Config row, the report parameters) stand on their first row.
//
// A pipe belongs to the thread that runs the report and must outlive the
// runs that use it; a pipe removes itself from its master and its details
// when it is destroyed.
class DataPipe
{
public:
    explicit DataPipe(QString name);
    virtual ~DataPipe();
    DataPipe(const DataPipe&) = delete;
    DataPipe& operator=(const DataPipe&) = delete;

    const QString& name() const { return m_name; }

    virtual QStringList fieldNames() const = 0;
    // -1 when the pipe has no such field (names compared without case).
    int fieldIndex(QStringView name) const;

    qsizetype rowCount();
    // Stands on a row; a row beyond the rows makes the pipe stand on none.
    void seek(qsizetype row);
    // The row it stands on, -1 when it has none.
    qsizetype currentRow();
    // Null when the pipe stands on no row.
    QVariant value(int field);
    QVariant value(QStringView field);

    // Re-reads its rows for the master's current row whenever the master moves.
    void follow(DataPipe& master);
    void unfollow();
    DataPipe* master() const { return m_master; }

    // Makes the pipe read its rows again before it is next used: what a
    // run does before it starts, so a pipe reused between runs shows the
    // data as it stands now.
    void invalidate();

protected:
    // Reads the rows again; for a pipe that follows a master, the rows of
    // the master's current row.
    virtual void reload() {}
    virtual qsizetype rows() const = 0;
    virtual void moveTo(qsizetype row) = 0;
    virtual QVariant fieldValue(qsizetype row, int field) const = 0;
    // For a pipe over something that moves by itself (a data set following
    // its own master): the row it stands on now, or -1 for none; -2 when the
    // pipe alone decides where it stands.
    virtual qsizetype ownPosition() const { return -2; }

private:
    void refresh();
    void markStale();

    QString m_name;
    DataPipe* m_master = nullptr;
    std::vector<DataPipe*> m_details;
    bool m_stale = true;
    qsizetype m_row = -1;
};

} // namespace kb::reports
