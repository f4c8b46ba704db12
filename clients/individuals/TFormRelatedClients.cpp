#include "individuals/TFormRelatedClients.h"

#include "individuals/IndividualForms.h"
#include "store/Database.h"

namespace kb {

TFormRelatedClients::TFormRelatedClients(Database& db, qint64 indivId) : m_indivId(indivId)
{
    const Params params{{QStringLiteral("Indiv_ID"), indivId}};
    const ResultSet individual = db.execute(
        QStringLiteral(
            "Select First_Name, Last_Name, Organization from Individuals where Indiv_ID = :Indiv_ID"),
        params);
    m_caption = QStringLiteral("Clients related to ");
    if (individual.rowCount() > 0)
        m_caption +=
            individualDisplayName(individual.value(0, 0).toString(), individual.value(0, 1).toString(),
                                  individual.value(0, 2).toString());
    m_rows = db.execute(
        QStringLiteral(
            "select clients.First_Name, Clients.Last_Name, Clients.Person_ID, Clients.Client_ID, "
            "Relationships.Relationship, Individuals.First_Name as IndivFirst, Individuals.Last_Name as "
            "IndivLast, "
            "Individuals.Organization as IndivOrganization from Relationships join Clients on "
            "Relationships.Person_ID = Clients.Person_ID join Individuals on Relationships.Indiv_ID = "
            "Individuals.Indiv_ID where Relationships.Indiv_ID = :Indiv_ID"),
        params);
}

QStringList TFormRelatedClients::columnTitles()
{
    return {QStringLiteral("Client ID"), QStringLiteral("Last Name"), QStringLiteral("First Name"),
            QStringLiteral("Relationship")};
}

QStringList TFormRelatedClients::rowTexts(int row) const
{
    return {m_rows.value(row, 3).toString().trimmed(), m_rows.value(row, 1).toString().trimmed(),
            m_rows.value(row, 0).toString().trimmed(), m_rows.value(row, 4).toString().trimmed()};
}

void TFormRelatedClients::ActivateRow(int row)
{
    if (row < 0 || row >= rowCount() || !m_mover) return;
    m_mover(m_rows.value(row, 2).toLongLong());
}

int TFormRelatedClients::relatedCount(Database& db, qint64 indivId)
{
    return db
        .execute(
            QStringLiteral("Select count(*) from Relationships join Clients on Relationships.Person_ID = "
                           "Clients.Person_ID where Relationships.Indiv_ID = :Indiv_ID"),
            {{QStringLiteral("Indiv_ID"), indivId}})
        .value(0, 0)
        .toInt();
}

} // namespace kb
