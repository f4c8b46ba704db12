#pragma once

#include <QDate>
#include <QString>

#include <vector>

namespace kb {

class Database;

// TableSpecialLabels: the clients whose deliveries a special meal flags by
// the Match Any rule, as Deliv_Dt and Person_ID, while a save flags them.
// It is a memory table of the session under a name of its own ("KB",
// "SpecLabels" and the time in milliseconds), so two workstations flag at
// once without meeting; it goes with the run screen.
class TableSpecialLabels
{
public:
    explicit TableSpecialLabels(Database& db);

    const QString& name() const { return m_name; }
    bool exists() const;
    // Creates the table when it does not exist.
    void create();
    void drop();

    void empty();
    qint64 rowCount();
    // One row per person, in the order given.
    void fill(const QDate& date, const std::vector<qint64>& personIds);

private:
    Database& m_db;
    QString m_name;
};

} // namespace kb
