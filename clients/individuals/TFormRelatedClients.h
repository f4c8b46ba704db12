#pragma once

#include "store/ResultSet.h"

#include <QString>

#include <functional>

namespace kb {

class Database;

// "Clients related to ...": the clients an individual is related to, with
// the name of each relationship. Choosing a row moves the client window to
// that client (the mover is given by the window).
class TFormRelatedClients
{
public:
    using ClientMover = std::function<void(qint64 personId)>;

    TFormRelatedClients(Database& db, qint64 indivId);

    // "Clients related to " and the individual's name (IndividualDisplayName).
    const QString& caption() const { return m_caption; }
    qint64 indivId() const { return m_indivId; }
    // First_Name, Last_Name, Person_ID, Client_ID, Relationship, IndivFirst,
    // IndivLast, IndivOrganization.
    const ResultSet& rows() const { return m_rows; }
    int rowCount() const { return int(m_rows.rowCount()); }
    static QStringList columnTitles();
    // The texts of a row, in the order of the titles.
    QStringList rowTexts(int row) const;

    void setClientMover(ClientMover mover) { m_mover = std::move(mover); }
    // A double click on a row.
    void ActivateRow(int row);

    // How many clients are related to the individual.
    static int relatedCount(Database& db, qint64 indivId);

private:
    qint64 m_indivId;
    QString m_caption;
    ResultSet m_rows;
    ClientMover m_mover;
};

} // namespace kb
