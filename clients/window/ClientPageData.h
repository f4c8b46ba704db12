#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace kb {

class DataSet;
class QueryDataSet;
class RecordServices;
class UserInterface;

// One query of the client window's pages: its statement, what its
// parameters follow, and what a page change asks when it is being edited.
struct PageQueryDefinition
{
    QString name;
    QString sql;
    // The data set whose current row gives the parameters: "Clients" or
    // another page query; each parameter is named like the field it takes.
    QString master;
    QStringList masterFields;
    bool live = false;
    // Asked at a page change while the query is in edit or insert; Yes
    // posts, No cancels. Empty: nothing is asked.
    QString saveQuestion;
    // Stays open across page changes (the alternate address of the header).
    bool keptOpen = false;
};

// The page queries in the order a page change asks about them. A later
// screen that edits a page's data makes its query live here and hangs its
// rules on the query's hooks (ClientPageData::query).
const std::vector<PageQueryDefinition>& pageQueryDefinitions();

// The detail data of the client window: loaded only while its page is in
// view, following the current client, and closed when the page is left.
class ClientPageData
{
public:
    ClientPageData(DataSet& clients, RecordServices& services, UserInterface& ui);
    ~ClientPageData();
    ClientPageData(const ClientPageData&) = delete;
    ClientPageData& operator=(const ClientPageData&) = delete;

    // Throws DbError(UnknownName) for a name that is no page query.
    QueryDataSet& query(const QString& name);
    bool isOpen(const QString& name) const;

    // Leaving a page: each query in edit or insert is asked about by its
    // question (Yes posts, No cancels), then every query is closed but those
    // kept open. A refused post is told and the query closed all the same.
    void leavePage();
    // Entering a page: opens its queries, in the page's order.
    void enterPage(int page);
    // Read-only users: every page query opens read-only.
    void setReadOnly(bool readOnly);
    // The queries whose master is the given set read their rows again for
    // its current row (after the set moved).
    void follow(const QString& master);

private:
    struct Entry;
    Entry* find(const QString& name) const;
    DataSet* masterSet(const Entry& entry) const;
    void open(Entry& entry);

    DataSet& m_clients;
    RecordServices& m_services;
    UserInterface& m_ui;
    std::vector<std::unique_ptr<Entry>> m_entries;
};

} // namespace kb
