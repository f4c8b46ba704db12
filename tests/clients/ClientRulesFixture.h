#pragma once

// What the client rule tests share: fresh data on the store under test, a
// signed-in user, a Clients table data set with the rules attached as the
// data module attaches them, and dialogs that the test answers.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"

#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientDialogs.h"
#include "rules/ClientRules.h"
#include "screens/TFormResetStartDate.h"
#include "screens/TFormShowHouseholdMembers.h"
#include "session/SessionState.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

// Texts in failure messages as text.
inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace kb::test {

// The screens of a save, answered by the test: each call is counted and
// handed to a function the test may set.
class ScriptedClientDialogs final : public ClientDialogs
{
public:
    std::function<void(TFormShowHouseholdMembers&)> onHouseholdMembers;
    std::function<bool(TFormResetStartDate&)> onResetStartDate;
    int householdMembersShown = 0;
    int resetStartDateShown = 0;

    void showHouseholdMembers(TFormShowHouseholdMembers& form) override
    {
        ++householdMembersShown;
        if (onHouseholdMembers) onHouseholdMembers(form);
    }
    bool showResetStartDate(TFormResetStartDate& form) override
    {
        ++resetStartDateShown;
        return onResetStartDate ? onResetStartDate(form) : false;
    }
};

// One workstation: its session, user, record services and Clients set.
struct Workstation
{
    Workstation(Database& database, const Clock& clock)
        : db(database), services(database, ui), rules(services, ui, clock, session),
          clients(database, QStringLiteral("Clients"))
    {
        session.cUserName = QStringLiteral("pat");
        session.userFullName = QStringLiteral("Pat Tester");
        session.staffId = 7;
        session.accessLevel = QStringLiteral("W");
        services.installErrorHooks(clients);
        rules.attach(clients);
        rules.setDialogs(&dialogs);
    }
    ~Workstation()
    {
        clients.close();
        rules.detach();
    }

    Database& db;
    ScriptedUserInterface ui;
    SessionState session;
    RecordServices services;
    ScriptedClientDialogs dialogs;
    ClientRules rules;
    TableDataSet clients;
};

class ClientRulesFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        ws = std::make_unique<Workstation>(data->db(), data->clock());
    }
    void TearDown() override { ws.reset(); }

    Database& db() { return data->db(); }
    ScriptedUserInterface& ui() { return ws->ui; }
    DataSet& clients() { return ws->clients; }
    ClientRules& rules() { return ws->rules; }
    ScriptedClientDialogs& dialogs() { return ws->dialogs; }
    QDate today() const { return QDate(2024, 3, 6); }

    // An active ongoing client, edited yesterday, with values overridden by `values`.
    void addClient(int personId, const Params& values = {})
    {
        Params row{{QStringLiteral("Person_ID"), personId},
                   {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(personId)},
                   {QStringLiteral("Last_Name"), QStringLiteral("Last%1").arg(personId)},
                   {QStringLiteral("First_Name"), QStringLiteral("First%1").arg(personId)},
                   {QStringLiteral("Status"), QStringLiteral("A")},
                   {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                   {QStringLiteral("Start_Dte"), QDate(2024, 1, 2)},
                   {QStringLiteral("Edit_Dte"), QDate(2024, 3, 5)},
                   {QStringLiteral("Address1"), QStringLiteral("12 Elm Street")},
                   {QStringLiteral("Monday"), true},
                   {QStringLiteral("Wednesday"), true}};
        for (const auto& [name, value] : values)
            row = with(row, name, value);
        insertRow(db(), QStringLiteral("Clients"), row);
    }
    // Stands on the client and puts the row into edit.
    void editClient(int personId)
    {
        if (!clients().isActive()) clients().open();
        // Rows the test added since the set was opened are read first.
        if (!clients().locate(QStringLiteral("PERSON_ID"), personId)) clients().refresh();
        ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), personId));
        clients().edit();
    }
    // Sets the values on the client and saves it through the rules.
    void save(int personId, const Params& values)
    {
        editClient(personId);
        for (const auto& [name, value] : values)
            clients().setFieldValue(name, value);
        clients().post();
    }
    QVariant stored(int personId, const QString& column)
    {
        return db()
            .execute(QStringLiteral("select %1 from Clients where Person_ID = :P").arg(column),
                     {{QStringLiteral("P"), personId}})
            .value(0, 0);
    }
    // The client's History events in the order written.
    QStringList history(int personId)
    {
        const ResultSet rows =
            db().execute(QStringLiteral("select Event from History where Person_ID = :P order by RecordID"),
                         {{QStringLiteral("P"), personId}});
        QStringList events;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            events.append(rows.value(r, 0).toString());
        return events;
    }
    QDate eventDate(int personId, const QString& event)
    {
        return db()
            .execute(QStringLiteral("select Event_Date from History where Person_ID = :P and Event = :E"),
                     {{QStringLiteral("P"), personId}, {QStringLiteral("E"), event}})
            .value(0, 0)
            .toDate();
    }
    void setConfig(const QString& column, const QVariant& value)
    {
        db().execute(QStringLiteral("update Config set %1 = :V").arg(column), {{QStringLiteral("V"), value}});
    }
    QStringList questions() const { return ws->ui.texts(ScriptedUserInterface::Kind::Question); }
    QStringList told() const
    {
        return ws->ui.texts(ScriptedUserInterface::Kind::Information) +
               ws->ui.texts(ScriptedUserInterface::Kind::Warning) +
               ws->ui.texts(ScriptedUserInterface::Kind::Error);
    }

    std::unique_ptr<TempDataDir> data;
    std::unique_ptr<Workstation> ws;
};

inline std::string storeParamName(const ::testing::TestParamInfo<StoreKind>& info)
{
    return storeName(info.param);
}

} // namespace kb::test
