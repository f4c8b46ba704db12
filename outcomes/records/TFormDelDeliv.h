#pragma once

#include "ClientLookup.h"
#include "records/DeliveryGroupDeletion.h"

#include <QDate>
#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Delete Delivery Credits": deletes every delivery of one date, of one
// service ("By Service") or of one client ("By Client"), walk-ins kept,
// included or alone.
class TFormDelDeliv
{
public:
    enum class Page { ByService, ByClient };
    struct Choice
    {
        qint64 id = 0;
        QString text;
    };

    TFormDelDeliv(Database& db, const SessionState& session, UserInterface& ui);

    static QString caption() { return QStringLiteral("Delete Delivery Credits"); }
    static QStringList kindChoices();

    // "Any service received                  [0]", then the mutually
    // exclusive delivery services, each with its Service_ID in brackets.
    const std::vector<Choice>& services();
    static QString clientLookupTitle()
    {
        return QStringLiteral("Locate the Client whose delivery credits are to be deleted");
    }
    // The look-up of "By Client": the clients by last and first name.
    ClientLookup& clientLookup() { return m_clientLookup; }

    Page page() const { return m_page; }
    void setPage(Page page) { m_page = page; }
    QDate date() const { return m_date; }
    void setDate(const QDate& date) { m_date = date; }
    // A service of services() by its id; -1 for none.
    void setService(qint64 serviceId) { m_serviceId = serviceId; }
    void setClient(qint64 personId) { m_personId = personId; }
    // An index into kindChoices(); -1 for none.
    void setKinds(int index) { m_kindsIndex = index; }

    // A date after 01/01/2000, the service or client, and the choice.
    bool okEnabled() const;
    // Deletes behind the progress window; true when something was deleted.
    bool ActionOK();
    const DeliveryGroupDeletion::Result& result() const { return m_result; }

private:
    DeliveryGroupDeletion::Selection selection();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    std::vector<Choice> m_services;
    ClientLookup m_clientLookup;
    Page m_page = Page::ByService;
    QDate m_date;
    qint64 m_serviceId = -1;
    qint64 m_personId = 0;
    int m_kindsIndex = -1;
    DeliveryGroupDeletion::Result m_result;
};

} // namespace kb
