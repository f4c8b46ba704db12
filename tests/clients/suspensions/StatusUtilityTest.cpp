// The stop and inactivation utilities: which clients they change, the
// History the client rules write for them, their list, and all or nothing.

#include "ClientRulesFixture.h"
#include "ClientStatuses.h"

#include "MessageError.h"

#include "suspensions/TFormStoppedClients.h"
#include "suspensions/TFrmInactivateClients.h"
#include "suspensions/TFrmStopClients.h"

namespace kb::test {

namespace {

class StatusUtilities : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        // Stop dates around yesterday (5 March) for the stop utility, and
        // long past for the inactivation one.
        addClient(1, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 4)}});
        addClient(2, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 5)}, {QStringLiteral("Stop_Code"), 93}});
        addClient(3, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 6)}});
        addClient(4);
        addClient(5, {{QStringLiteral("Stop_Dte"), QDate(2024, 1, 10)},
                      {QStringLiteral("Status"), QStringLiteral("S")}});
        addClient(6, {{QStringLiteral("Stop_Dte"), QDate(2024, 2, 20)},
                      {QStringLiteral("Status"), QStringLiteral("S")}});
        addClient(7, {{QStringLiteral("Stop_Dte"), QDate(2024, 1, 1)},
                      {QStringLiteral("Status"), QStringLiteral("W")}});
        insertRow(
            db(), QStringLiteral("StopReasons"),
            {{QStringLiteral("Stop_ID"), 93}, {QStringLiteral("Stop_Reason"), QStringLiteral("Moved away")}});
        setConfig(QStringLiteral("STOPPED2INACTIVE_DAYS"), 30);
        clients().open();
    }
    QString statuses() { return clientStatuses(db()); }
    int historyRows()
    {
        return db().execute(QStringLiteral("select count(*) from History")).value(0, 0).toInt();
    }
    static QStringList ids(const std::vector<StoppedClientsUtility::Change>& changes)
    {
        QStringList list;
        for (const auto& change : changes)
            list.append(change.clientId);
        return list;
    }
};

} // namespace

TEST_P(StatusUtilities, StopAllStopsTheActiveClientsWhoseStopDateHasCome)
{
    TFrmStopClients stop(ws->services, ui(), clients(), data->clock());
    EXPECT_EQ(stop.date(), QDate(2024, 3, 5));
    EXPECT_EQ(stop.listTitle(), QStringLiteral("Active Clients with stop dates prior to 3/5/2024"));
    const auto rows = stop.selection();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].clientId, QStringLiteral("1.0"));
    EXPECT_EQ(rows[1].stopReason, QStringLiteral("Moved away"));

    int marks = 0;
    stop.setTransactionMark([&](bool on) { marks += on ? 1 : -1; });
    clients().locate(QStringLiteral("PERSON_ID"), 4);
    ASSERT_TRUE(stop.ActionAll());
    EXPECT_EQ(marks, 0);
    EXPECT_EQ(statuses(), QStringLiteral("SSAASSW"));
    EXPECT_EQ(ids(stop.changes()), (QStringList{QStringLiteral("1.0"), QStringLiteral("2.0")}));
    EXPECT_EQ(history(1), QStringList{QStringLiteral("Status changed from Active to Stopped.")});
    EXPECT_EQ(history(2), QStringList{QStringLiteral("Status changed from Active to Stopped.")});
    EXPECT_TRUE(history(3).isEmpty());
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 4); // back on the client of before
    EXPECT_TRUE(told().isEmpty());
}

TEST_P(StatusUtilities, InactivateAllByTheConfiguredDays)
{
    TFrmInactivateClients inactivate(ws->services, ui(), clients(), data->clock());
    EXPECT_EQ(inactivate.date(), QDate(2024, 2, 5)); // 30 days before today
    EXPECT_EQ(inactivate.listTitle(), QStringLiteral("Clients stopped over 30 days."));
    inactivate.setDate(QDate(2024, 1, 31));
    EXPECT_EQ(inactivate.listTitle(), QStringLiteral("Clients stopped over 30 days."));
    ASSERT_TRUE(inactivate.ActionAll());
    EXPECT_EQ(statuses(), QStringLiteral("AAAAISW"));
    EXPECT_EQ(history(5), QStringList{QStringLiteral("Status changed from Stopped to Inactive.")});
    EXPECT_EQ(stored(5, QStringLiteral("Inactive_D")).toDate(), today());
}

TEST_P(StatusUtilities, TheListWritesWhatItsRowsSay)
{
    TFrmStopClients stop(ws->services, ui(), clients(), data->clock());
    stop.setDate(QDate(2024, 3, 6));
    TFormStoppedClients list(stop);
    ASSERT_EQ(list.rows().size(), 3u);
    ASSERT_EQ(list.choices().size(), 2u);
    EXPECT_EQ(list.choices()[0].word, QStringLiteral("Active"));
    EXPECT_EQ(list.choices()[1].word, QStringLiteral("Stopped"));
    EXPECT_TRUE(list.okEnabled());
    EXPECT_TRUE(list.setStatus(0, QStringLiteral("S")));
    EXPECT_FALSE(list.setStatus(1, QStringLiteral("I"))); // no choice of this list
    EXPECT_TRUE(list.setStatus(2, QStringLiteral("S")));
    ASSERT_TRUE(list.ActionOk());
    EXPECT_EQ(statuses(), QStringLiteral("SASASSW")); // a row left at Active is passed over

    // In the inactivation list a row left at Stopped is written back unchanged.
    TFrmInactivateClients inactivate(ws->services, ui(), clients(), data->clock());
    inactivate.setDate(QDate(2024, 2, 29));
    TFormStoppedClients stopped(inactivate);
    ASSERT_EQ(stopped.rows().size(), 2u);
    EXPECT_TRUE(stopped.setStatus(0, QStringLiteral("I")));
    ASSERT_TRUE(stopped.ActionOk());
    EXPECT_EQ(statuses(), QStringLiteral("SASAISW"));
    EXPECT_EQ(ids(inactivate.changes()), QStringList{QStringLiteral("5.0")});
    EXPECT_TRUE(history(6).isEmpty());

    // An empty list cannot be confirmed.
    inactivate.setDate(QDate(2023, 1, 1));
    TFormStoppedClients empty(inactivate);
    EXPECT_FALSE(empty.okEnabled());
    EXPECT_FALSE(empty.ActionOk());
}

TEST_P(StatusUtilities, AFailureHalfWayChangesNothing)
{
    // The second client's save fails after the first was written.
    int posts = 0;
    const DataSet::HookFunction rulesAfterPost = clients().hook(DataSet::Hook::AfterPost);
    clients().setHook(DataSet::Hook::AfterPost, [&](DataSet& set) {
        rulesAfterPost(set);
        if (++posts == 2) throw MessageError(QStringLiteral("disk full"));
    });
    const int before = historyRows();
    TFrmStopClients stop(ws->services, ui(), clients(), data->clock());
    EXPECT_FALSE(stop.ActionAll());
    EXPECT_EQ(posts, 2);
    EXPECT_EQ(told(), QStringList{QStringLiteral("Error encountered while stopping: disk full")});
    EXPECT_EQ(statuses(), QStringLiteral("AAAASSW"));
    EXPECT_EQ(historyRows(), before);
    EXPECT_TRUE(stop.changes().empty());
    EXPECT_FALSE(db().inTransaction());
    // The set shows the stored rows again, not the rolled-back ones.
    ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), 1));
    EXPECT_EQ(clients().fieldValue(u"STATUS").toString(), QStringLiteral("A"));

    // The list's OK fails in silence, with nothing changed either.
    posts = 0;
    ui().clear();
    TFormStoppedClients list(stop);
    list.setStatus(0, QStringLiteral("S"));
    list.setStatus(1, QStringLiteral("S"));
    EXPECT_FALSE(list.ActionOk());
    EXPECT_TRUE(told().isEmpty());
    EXPECT_EQ(statuses(), QStringLiteral("AAAASSW"));
    clients().setHook(DataSet::Hook::AfterPost, rulesAfterPost);
}

TEST_P(StatusUtilities, TheListPrintsItsClientsWithTheirStopDatesAndReasons)
{
    TFrmStopClients stop(ws->services, ui(), clients(), data->clock());
    TFormStoppedClients list(stop);
    EXPECT_FALSE(list.printEnabled()); // nothing to print with
    int printed = 0;
    stop.setReportPrinter([&](const ResultSet& rows, const QString& title, bool toPrinter) {
        ++printed;
        EXPECT_EQ(title, QStringLiteral("Active Clients with stop dates prior to 3/5/2024"));
        EXPECT_TRUE(toPrinter);
        ASSERT_EQ(rows.rowCount(), 2);
        EXPECT_EQ(rows.columnName(0), QStringLiteral("Client_ID"));
        EXPECT_EQ(rows.value(0, u"Client_ID").toString(), QStringLiteral("1.0"));
        EXPECT_EQ(rows.value(0, u"Stop_Dte").toDate(), QDate(2024, 3, 4));
        EXPECT_EQ(rows.value(1, u"Last_Name").toString(), QStringLiteral("Last2"));
        EXPECT_EQ(rows.value(1, u"Stop_Reason").toString(), QStringLiteral("Moved away"));
    });
    ASSERT_TRUE(list.printEnabled());
    list.ActionPrintReport(true);
    EXPECT_EQ(printed, 1);
    // Printing changes nobody.
    EXPECT_EQ(statuses(), QStringLiteral("AAAASSW"));
}

INSTANTIATE_TEST_SUITE_P(Stores, StatusUtilities, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace kb::test
