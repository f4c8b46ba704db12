// Data sets over real stores: the cursor, editing and its states, the hook
// order the rules rely on, filters, calculated and lookup fields, master and
// detail, live results, and the second session.

#include "DataSetFixture.h"

#include "Money.h"
#include "dataset/Abort.h"
#include "dataset/HookSuspension.h"
#include "dataset/QueryDataSet.h"
#include "dataset/ScratchSession.h"
#include "dataset/TableDataSet.h"

using namespace kb;
using Hook = DataSet::Hook;
using State = DataSet::State;

namespace {

class DataSetTest : public test::DataSetFixture
{
protected:
    QStringList walk(DataSet& set, const QString& field)
    {
        QStringList values;
        for (set.first(); !set.eof(); set.next())
            values.append(set.fieldValue(field).toString());
        return values;
    }

    // The clients of status A by name, as a live result with a computed column.
    std::unique_ptr<QueryDataSet> activeClients()
    {
        auto active = std::make_unique<QueryDataSet>(
            db(), QStringLiteral("select Person_ID, Last_Name, Status, Upper(First_Name) as Shout from Clients "
                                 "where Status = :Status order by Last_Name"));
        active->setParam(QStringLiteral("Status"), QStringLiteral("A"));
        active->setRequestLive(true);
        return active;
    }

    // Every hook of the set appends its name to the log.
    void logHooks(DataSet& set, QStringList& log)
    {
        const std::pair<Hook, const char*> names[] = {
            {Hook::BeforeOpen, "BeforeOpen"},     {Hook::AfterOpen, "AfterOpen"},
            {Hook::BeforeClose, "BeforeClose"},   {Hook::AfterClose, "AfterClose"},
            {Hook::BeforeInsert, "BeforeInsert"}, {Hook::AfterInsert, "AfterInsert"},
            {Hook::BeforeEdit, "BeforeEdit"},     {Hook::AfterEdit, "AfterEdit"},
            {Hook::BeforePost, "BeforePost"},     {Hook::AfterPost, "AfterPost"},
            {Hook::BeforeCancel, "BeforeCancel"}, {Hook::AfterCancel, "AfterCancel"},
            {Hook::BeforeDelete, "BeforeDelete"}, {Hook::AfterDelete, "AfterDelete"},
            {Hook::BeforeScroll, "BeforeScroll"}, {Hook::AfterScroll, "AfterScroll"},
            {Hook::OnNewRecord, "OnNewRecord"}};
        for (const auto& [hook, name] : names) {
            const QString text = QString::fromLatin1(name);
            set.setHook(hook, [&log, text](DataSet&) { log.append(text); });
        }
    }
};

TEST_P(DataSetTest, ATableOpensByNameAndIsWalkedInIndexOrder)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("clients"));
    clients.setIndexName(QStringLiteral("LAST_FIRST"));
    EXPECT_EQ(clients.state(), State::Inactive);
    clients.open();
    EXPECT_EQ(clients.state(), State::Browse);
    EXPECT_EQ(clients.recordCount(), 4);
    EXPECT_EQ(clients.recNo(), 1);
    EXPECT_TRUE(clients.bof());
    EXPECT_EQ(walk(clients, QStringLiteral("last_name")), QStringList({"Ames", "Bell", "Cole", "Drew"}));
    EXPECT_TRUE(clients.eof());
    EXPECT_EQ(clients.recNo(), 4);

    clients.last();
    clients.prior();
    EXPECT_EQ(clients.fieldValue(u"LAST_NAME").toString(), "Cole");
    EXPECT_EQ(clients.moveBy(-10), -2);
    EXPECT_TRUE(clients.bof());
    EXPECT_EQ(clients.recNo(), 1);
    clients.setRecNo(3);
    EXPECT_EQ(clients.fieldValue(u"Person_ID").toInt(), 3);
    EXPECT_EQ(clients.field(clients.fieldIndex(u"Person_ID")).type, FieldType::Int);

    // Another order keeps the current row.
    db().execute(QStringLiteral("Update Clients set Client_ID = '099' where Person_ID = 4"));
    clients.setIndexName(QStringLiteral("CLIENT_ID"));
    EXPECT_EQ(clients.fieldValue(u"Person_ID").toInt(), 3);
    EXPECT_EQ(walk(clients, QStringLiteral("Last_Name")), QStringList({"Drew", "Ames", "Bell", "Cole"}));
    EXPECT_THROW(clients.setIndexName(QStringLiteral("NO_SUCH_INDEX")), DbError);
    EXPECT_EQ(clients.indexName(), "CLIENT_ID");
    EXPECT_THROW(clients.fieldValue(u"Colour"), DbError);

    clients.close();
    EXPECT_EQ(clients.state(), State::Inactive);
    EXPECT_TRUE(clients.isEmpty());
}

TEST_P(DataSetTest, PostWritesTheEditAndTheRowReadsBackAsStored)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.open();
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 2));
    // Fields are set in Edit or Insert only.
    EXPECT_THROW(clients.setFieldValue(u"Last_Name", QStringLiteral("X")), DbError);
    clients.edit();
    EXPECT_EQ(clients.state(), State::Edit);
    clients.setFieldValue(u"Last_Name", QStringLiteral("Bellingham-Worthington-Smythe"));
    clients.setFieldValue(u"DOB", QStringLiteral("1940-05-06"));
    EXPECT_TRUE(clients.isModified());
    EXPECT_EQ(clients.oldValue(u"Last_Name").toString(), "Bell");
    EXPECT_THROW(clients.setFieldValue(u"DOB", QStringLiteral("not a date")), DbError);
    clients.post();
    EXPECT_EQ(clients.state(), State::Browse);
    // The column is 25 wide: the set shows what the table holds.
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Bellingham-Worthington-Sm");
    EXPECT_EQ(clients.fieldValue(u"DOB").toDate(), QDate(1940, 5, 6));
    auto other = otherSession();
    EXPECT_EQ(lastName(*other, 2), "Bellingham-Worthington-Sm");
    // Only the changed columns were written.
    EXPECT_EQ(other->execute(QStringLiteral("select First_Name from Clients where Person_ID = 2")).value(0, 0).toString(),
              "Bob");
}

TEST_P(DataSetTest, InsertedRowsGetTheirIdentityAndCanBeEditedAgain)
{
    // Clients has a row key of its own; Deliveri has none.
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.open();
    EXPECT_TRUE(clients.isEmpty());
    clients.append();
    EXPECT_EQ(clients.state(), State::Insert);
    clients.setFieldValue(u"Person_ID", 7);
    clients.setFieldValue(u"Last_Name", QStringLiteral("Gale"));
    clients.post();
    EXPECT_EQ(clients.recordCount(), 1);
    EXPECT_GT(clients.fieldValue(u"RecordID").toInt(), 0);
    const DataSet::Bookmark mark = clients.bookmark();
    test::editAndPost(clients, u"First_Name", QStringLiteral("Gil"));
    EXPECT_TRUE(clients.bookmarkValid(mark));

    TableDataSet deliveries(db(), QStringLiteral("Deliveri"));
    deliveries.open();
    for (int id : {10, 11}) {
        deliveries.append();
        deliveries.setFieldValue(u"Deliv_ID", id);
        deliveries.setFieldValue(u"Person_ID", 7);
        deliveries.post();
    }
    deliveries.first();
    test::editAndPost(deliveries, u"Route_ID", QStringLiteral("R1"));
    deliveries.refresh();
    EXPECT_EQ(deliveries.recordCount(), 2);
    EXPECT_EQ(deliveries.fieldValue(u"Deliv_ID").toInt(), 10);
    EXPECT_EQ(deliveries.fieldValue(u"Route_ID").toString(), "R1");
    EXPECT_EQ(otherSession()->recordCount(QStringLiteral("Deliveri")), 2);
}

TEST_P(DataSetTest, AFailedPostLeavesTheRowInEditWithWhatWasTyped)
{
    db().execute(QStringLiteral("Insert into Routes (Route_ID, Route_Desc) values ('R1', 'North')"));
    TableDataSet routes(db(), QStringLiteral("Routes"));
    routes.open();
    routes.append();
    routes.setFieldValue(u"Route_ID", QStringLiteral("R1"));
    routes.setFieldValue(u"Route_Desc", QStringLiteral("R9"));
    EXPECT_EQ(test::engineCodeOf([&] { routes.post(); }), 9729);
    EXPECT_EQ(routes.state(), State::Insert);
    EXPECT_EQ(routes.fieldValue(u"Route_Desc").toString(), "R9");
    routes.setFieldValue(u"Route_ID", QStringLiteral("R2"));
    routes.post();
    EXPECT_EQ(routes.recordCount(), 2);

    // The same for an edit, and the row keeps its lock until it is left.
    routes.edit();
    routes.setFieldValue(u"Route_ID", QStringLiteral("R1"));
    EXPECT_EQ(test::engineCodeOf([&] { routes.post(); }), 9729);
    EXPECT_EQ(routes.state(), State::Edit);
    auto other = otherSession();
    TableDataSet elsewhere(*other, QStringLiteral("Routes"));
    elsewhere.open();
    ASSERT_TRUE(elsewhere.locate(QStringLiteral("Route_ID"), QStringLiteral("R2")));
    EXPECT_EQ(test::engineCodeOf([&] { elsewhere.edit(); }), 10258);
    routes.cancel();
    EXPECT_EQ(routes.fieldValue(u"Route_ID").toString(), "R2");
    elsewhere.edit();
    elsewhere.cancel();
}

TEST_P(DataSetTest, HooksFireInTheOrderTheRulesRelyOn)
{
    addClients();
    QStringList log;
    TableDataSet clients(db(), QStringLiteral("Clients"));
    logHooks(clients, log);
    clients.open();
    EXPECT_EQ(log, QStringList({"BeforeOpen", "AfterOpen", "AfterScroll"}));

    log.clear();
    test::editAndPost(clients, u"Status", QStringLiteral("S"));
    EXPECT_EQ(log, QStringList({"BeforeEdit", "AfterEdit", "BeforePost", "AfterPost"}));

    // Moving off a modified row posts it before the move.
    log.clear();
    clients.edit();
    clients.setFieldValue(u"Status", QStringLiteral("A"));
    clients.next();
    EXPECT_EQ(log, QStringList({"BeforeEdit", "AfterEdit", "BeforePost", "AfterPost", "BeforeScroll", "AfterScroll"}));
    EXPECT_EQ(otherSession()->execute(QStringLiteral("select Status from Clients where Person_ID = 1")).value(0, 0).toString(),
              "A");

    // An edit without changes is cancelled by a move.
    log.clear();
    clients.edit();
    clients.prior();
    EXPECT_EQ(log, QStringList({"BeforeEdit", "AfterEdit", "BeforeCancel", "AfterCancel", "BeforeScroll", "AfterScroll"}));

    log.clear();
    clients.append();
    EXPECT_EQ(log, QStringList({"BeforeInsert", "BeforeScroll", "OnNewRecord", "AfterInsert", "AfterScroll"}));
    log.clear();
    clients.cancel();
    EXPECT_EQ(log, QStringList({"BeforeCancel", "AfterCancel", "AfterScroll"}));

    log.clear();
    clients.remove();
    EXPECT_EQ(log, QStringList({"BeforeDelete", "BeforeScroll", "AfterDelete", "AfterScroll"}));

    log.clear();
    clients.close();
    EXPECT_EQ(log, QStringList({"BeforeClose", "AfterClose"}));
}

TEST_P(DataSetTest, ABeforeHookAbortsItsOperation)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.setHook(Hook::BeforePost, [](DataSet& set) {
        if (set.fieldValue(u"Last_Name").toString().isEmpty())
            throw Abort();
        set.setFieldValue(u"Edit_Dte", QDate(2024, 3, 6)); // a stamp on every save
    });
    clients.setHook(Hook::BeforeEdit, [](DataSet& set) {
        if (set.fieldValue(u"Status").toString() == QLatin1String("I"))
            throw Abort();
    });
    clients.open();
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 1));
    clients.edit();
    clients.setFieldValue(u"Last_Name", QString());
    EXPECT_THROW(clients.post(), Abort);
    EXPECT_EQ(clients.state(), State::Edit);
    EXPECT_EQ(lastName(db(), 1), "Ames");
    clients.setFieldValue(u"Last_Name", QStringLiteral("Amos"));
    clients.post();
    EXPECT_EQ(clients.fieldValue(u"Edit_Dte").toDate(), QDate(2024, 3, 6));

    // A refused edit takes no lock.
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 2));
    EXPECT_THROW(clients.edit(), Abort);
    EXPECT_EQ(clients.state(), State::Browse);
    auto other = otherSession();
    TableDataSet elsewhere(*other, QStringLiteral("Clients"));
    elsewhere.open();
    ASSERT_TRUE(elsewhere.locate(QStringLiteral("Person_ID"), 2));
    elsewhere.edit();
    elsewhere.cancel();
}

TEST_P(DataSetTest, AHookTakenOffDoesNotFireOnItsOwnChanges)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    int afterPosts = 0;
    int beforeEdits = 0;
    clients.setHook(Hook::BeforeEdit, [&](DataSet&) { ++beforeEdits; });
    clients.setHook(Hook::AfterPost, [&](DataSet& set) {
        ++afterPosts;
        // The rule's own follow-up edit of the saved row.
        HookSuspension quiet(set, {Hook::BeforeEdit, Hook::AfterPost});
        test::editAndPost(set, u"Inactive_D", QDate(2024, 3, 6));
        set.flushBuffers();
    });
    clients.open();
    test::editAndPost(clients, u"Status", QStringLiteral("I"));
    EXPECT_EQ(afterPosts, 1);
    EXPECT_EQ(beforeEdits, 1);
    EXPECT_TRUE(clients.isHookOn(Hook::AfterPost));
    EXPECT_EQ(clients.fieldValue(u"Inactive_D").toDate(), QDate(2024, 3, 6));
    EXPECT_EQ(clients.fieldValue(u"Status").toString(), "I");

    // Taken off by hand, and put back.
    clients.takeOff(Hook::AfterPost);
    test::editAndPost(clients, u"Status", QStringLiteral("A"));
    EXPECT_EQ(afterPosts, 1);
    clients.putBack(Hook::AfterPost);
    test::editAndPost(clients, u"Status", QStringLiteral("S"));
    EXPECT_EQ(afterPosts, 2);
}

TEST_P(DataSetTest, ErrorHooksRetryOrAbandon)
{
    db().execute(QStringLiteral("Insert into Routes (Route_ID) values ('1')"));
    TableDataSet routes(db(), QStringLiteral("Routes"));
    std::vector<int> seen;
    // "Yes retries": the first answer fixes the key and retries; then "No abandons".
    routes.setErrorHook(Hook::OnPostError, [&](DataSet& set, const DbError& error) {
        seen.push_back(error.engineCode());
        if (seen.size() == 1) {
            set.setFieldValue(u"Route_ID", QStringLiteral("5"));
            return DataSet::ErrorAction::Retry;
        }
        return DataSet::ErrorAction::Abort;
    });
    routes.open();
    routes.append();
    routes.setFieldValue(u"Route_ID", QStringLiteral("1"));
    routes.post();
    EXPECT_EQ(seen, std::vector<int>({9729}));
    EXPECT_EQ(routes.fieldValue(u"Route_ID").toString(), "5");

    routes.append();
    routes.setFieldValue(u"Route_ID", QStringLiteral("1"));
    EXPECT_THROW(routes.post(), Abort);
    EXPECT_EQ(routes.state(), State::Insert);
    routes.cancel();
    EXPECT_THROW(routes.setErrorHook(Hook::AfterPost, {}), DbError);
}

TEST_P(DataSetTest, ARowChangedSinceItWasReadGives8708AndARefreshLetsThePostThrough)
{
    addClients();
    auto other = otherSession();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.open();
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 3));

    other->execute(QStringLiteral("Update Clients set Last_Name = 'Colt' where Person_ID = 3"));
    EXPECT_EQ(test::engineCodeOf([&] { clients.edit(); }), 8708);
    EXPECT_EQ(clients.state(), State::Browse);
    clients.refresh();
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Colt");
    clients.edit();
    clients.setFieldValue(u"First_Name", QStringLiteral("Cyd"));

    // A plain statement of another workstation while the row is in edit
    // waits for the row and fails; the post then goes through as typed.
    EXPECT_EQ(test::engineCodeOf([&] {
                  other->execute(QStringLiteral("Update Clients set Zip = '12345' where Person_ID = 3"));
              }),
              10258);
    int refreshes = 0;
    clients.setErrorHook(Hook::OnPostError, [&](DataSet& set, const DbError&) {
        ++refreshes;
        set.refresh();
        return DataSet::ErrorAction::Retry;
    });
    clients.post();
    EXPECT_EQ(refreshes, 0);
    const ResultSet row = other->execute(QStringLiteral("select First_Name, Zip from Clients where Person_ID = 3"));
    EXPECT_EQ(row.value(0, 0).toString(), "Cyd");
    EXPECT_TRUE(row.value(0, 1).isNull());

    // Deleted by another workstation.
    other->execute(QStringLiteral("Delete from Clients where Person_ID = 3"));
    EXPECT_EQ(test::engineCodeOf([&] { clients.edit(); }), 8708);
    EXPECT_EQ(test::engineCodeOf([&] { clients.remove(); }), 8708);
}

TEST_P(DataSetTest, TheFilterCallbackHidesRowsButNotFromThePhysicalCount)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.setIndexName(QStringLiteral("LAST_FIRST"));
    clients.setFilter([](const DataSet& set) { return set.fieldValue(u"Status").toString() == QLatin1String("A"); });
    clients.open();
    EXPECT_EQ(clients.recordCount(), 4);
    clients.setFiltered(true);
    EXPECT_TRUE(clients.isFiltered());
    EXPECT_EQ(clients.recordCount(), 3);
    EXPECT_EQ(clients.physicalRecordCount(), 4);
    EXPECT_EQ(walk(clients, QStringLiteral("Last_Name")), QStringList({"Ames", "Cole", "Drew"}));
    EXPECT_FALSE(clients.locate(QStringLiteral("Last_Name"), QStringLiteral("Bell")));
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Drew");

    // Taking the filter off during an edit keeps the row, as the client rules do.
    ASSERT_TRUE(clients.locate(QStringLiteral("Last_Name"), QStringLiteral("Cole")));
    clients.edit();
    clients.setFiltered(false);
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Cole");
    EXPECT_EQ(clients.recordCount(), 4);
    clients.setFieldValue(u"Status", QStringLiteral("S"));
    clients.post();
    clients.setFiltered(true);
    EXPECT_EQ(clients.recordCount(), 2);

    // A post that makes the row fail the filter moves the set to the next row.
    clients.first();
    test::editAndPost(clients, u"Status", QStringLiteral("W"));
    EXPECT_EQ(clients.recordCount(), 1);
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Drew");
}

TEST_P(DataSetTest, LocateLookupAndBookmarks)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.setIndexName(QStringLiteral("LAST_FIRST"));
    clients.open();
    EXPECT_TRUE(clients.locate(QStringLiteral("LAST_NAME"), QStringLiteral("cole"), {true, false}));
    EXPECT_EQ(clients.recNo(), 3);
    EXPECT_FALSE(clients.locate(QStringLiteral("LAST_NAME"), QStringLiteral("cole")));
    EXPECT_EQ(clients.recNo(), 3);
    EXPECT_TRUE(clients.locate(QStringLiteral("Last_Name"), QStringLiteral("Be"), {false, true}));
    EXPECT_EQ(clients.fieldValue(u"Person_ID").toInt(), 2);
    EXPECT_TRUE(clients.locate({QStringLiteral("Status"), QStringLiteral("Person_ID")}, {QStringLiteral("A"), QStringLiteral("4")}));
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Drew");
    EXPECT_TRUE(clients.locate(QStringLiteral("Race"), QVariant()));
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Drew");

    const DataSet::Bookmark drew = clients.bookmark();
    EXPECT_EQ(clients.lookup({QStringLiteral("Person_ID")}, {1}, QStringLiteral("First_Name")).toString(), "Ann");
    EXPECT_TRUE(clients.lookup({QStringLiteral("Person_ID")}, {99}, QStringLiteral("First_Name")).isNull());
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Drew"); // lookup does not move
    clients.first();
    clients.gotoBookmark(drew);
    EXPECT_EQ(clients.recNo(), 4);

    clients.refresh();
    EXPECT_EQ(clients.recNo(), 4);
    EXPECT_TRUE(clients.bookmarkValid(drew));
    clients.remove();
    EXPECT_FALSE(clients.bookmarkValid(drew));
    EXPECT_THROW(clients.gotoBookmark(drew), DbError);
    EXPECT_EQ(clients.recordCount(), 3);
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Cole");
    EXPECT_EQ(otherSession()->recordCount(QStringLiteral("Clients")), 3);
}

TEST_P(DataSetTest, CalculatedAndLookupFieldsFollowTheRow)
{
    addClients();
    db().execute(QStringLiteral("Delete from Race"));
    db().execute(QStringLiteral("Insert into Race (Race_Cd, Race_Desc) values ('W', 'White'), ('B', 'Black')"));
    TableDataSet races(db(), QStringLiteral("Race"));
    races.open();

    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.setIndexName(QStringLiteral("LAST_FIRST"));
    clients.addCalculatedField(QStringLiteral("FullName"), FieldType::String, 40);
    clients.addLookupField(QStringLiteral("RaceText"), QStringLiteral("Race"), QStringLiteral("Race"),
                           QStringLiteral("Race_Cd"), QStringLiteral("Race_Desc"));
    clients.addLookupField(QStringLiteral("RaceFromSet"), QStringLiteral("Race"), races, QStringLiteral("Race_Cd"),
                           QStringLiteral("Race_Desc"));
    int calculations = 0;
    clients.setOnCalcFields([&](DataSet& set) {
        ++calculations;
        set.setFieldValue(u"FullName", set.fieldValue(u"First_Name").toString() + QLatin1Char(' ') +
                                           set.fieldValue(u"Last_Name").toString() + QLatin1Char('/') +
                                           set.fieldValue(u"RaceText").toString());
    });
    clients.open();
    EXPECT_EQ(calculations, 0); // rows are calculated when they are looked at
    EXPECT_EQ(clients.fieldValue(u"FullName").toString(), "Ann Ames/White");
    EXPECT_EQ(clients.fieldValue(u"RaceFromSet").toString(), "White");
    EXPECT_EQ(clients.field(clients.fieldIndex(u"RaceText")).type, FieldType::String);
    clients.next();
    EXPECT_EQ(clients.fieldValue(u"RaceText").toString(), "Black");
    clients.last();
    EXPECT_TRUE(clients.fieldValue(u"RaceText").isNull());
    EXPECT_EQ(clients.fieldValue(u"FullName").toString(), "Di Drew/");

    // A calculated field is no stored column, and follows an edit.
    clients.edit();
    EXPECT_THROW(clients.setFieldValue(u"FullName", QStringLiteral("x")), DbError);
    clients.setFieldValue(u"Race", QStringLiteral("B"));
    EXPECT_EQ(clients.fieldValue(u"FullName").toString(), "Di Drew/Black");
    clients.post();
    EXPECT_EQ(clients.fieldValue(u"FullName").toString(), "Di Drew/Black");

    // A filter may use them.
    clients.setFilter([](const DataSet& set) { return set.fieldValue(u"RaceText").toString() == QLatin1String("Black"); });
    clients.setFiltered(true);
    EXPECT_EQ(walk(clients, QStringLiteral("Last_Name")), QStringList({"Bell", "Drew"}));
}

TEST_P(DataSetTest, ADetailFollowsItsMaster)
{
    addClients();
    db().execute(QStringLiteral("Insert into Deliveri (Deliv_ID, Person_ID, Route_ID) values "
                                "(1, 1, 'A'), (2, 1, 'B'), (3, 3, 'C')"));
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.setIndexName(QStringLiteral("PERSON_ID"));
    TableDataSet deliveries(db(), QStringLiteral("Deliveri"));
    deliveries.setIndexName(QStringLiteral("DELIV_ID"));
    deliveries.setMaster(clients, QStringLiteral("Person_ID"), QStringLiteral("Person_ID"));
    int detailScrolls = 0;
    deliveries.setHook(Hook::AfterScroll, [&](DataSet&) { ++detailScrolls; });
    clients.open();
    deliveries.open();
    EXPECT_EQ(walk(deliveries, QStringLiteral("Route_ID")), QStringList({"A", "B"}));
    clients.next();
    EXPECT_TRUE(deliveries.isEmpty());
    clients.next();
    EXPECT_EQ(walk(deliveries, QStringLiteral("Route_ID")), QStringList({"C"}));
    EXPECT_EQ(deliveries.physicalRecordCount(), 3);

    // A new detail row takes the master's key.
    detailScrolls = 0;
    deliveries.append();
    deliveries.setFieldValue(u"Deliv_ID", 4);
    deliveries.post();
    EXPECT_GT(detailScrolls, 0);
    EXPECT_EQ(db().execute(QStringLiteral("select Person_ID from Deliveri where Deliv_ID = 4")).value(0, 0).toInt(), 3);
    EXPECT_EQ(deliveries.recordCount(), 2);

    // A detail row moved to another master leaves; the master's close empties the detail.
    deliveries.first();
    test::editAndPost(deliveries, u"Person_ID", 4);
    EXPECT_EQ(walk(deliveries, QStringLiteral("Deliv_ID")), QStringList({"4"}));
    clients.close();
    EXPECT_TRUE(deliveries.isEmpty());
    deliveries.clearMaster();
    deliveries.refresh();
    EXPECT_EQ(deliveries.recordCount(), 4);
}

TEST_P(DataSetTest, ALiveResultEditsItsTableAndLosesRowsThatNoLongerMatch)
{
    addClients();
    auto live = activeClients();
    QueryDataSet& active = *live;
    active.open();
    ASSERT_TRUE(active.isLive());
    EXPECT_TRUE(active.canModify());
    EXPECT_EQ(walk(active, QStringLiteral("Last_Name")), QStringList({"Ames", "Cole", "Drew"}));
    EXPECT_EQ(active.fieldIndex(u"KB_ROWID"), -1);
    EXPECT_EQ(active.physicalRecordCount(), 3);

    // Computed columns and columns not selected cannot be set.
    active.setRecNo(2);
    active.edit();
    EXPECT_THROW(active.setFieldValue(u"Shout", QStringLiteral("X")), DbError);
    EXPECT_THROW(active.setFieldValue(u"First_Name", QStringLiteral("Cyrus")), DbError);
    active.setFieldValue(u"Last_Name", QStringLiteral("Cone"));
    active.post();
    EXPECT_EQ(lastName(db(), 3), "Cone");
    EXPECT_EQ(active.fieldValue(u"Shout").toString(), "CY");

    // A text that names the identity itself, and one whose rows all match.
    QueryDataSet named(db(), QStringLiteral("select KB_ROWID, c.* from Clients c order by Person_ID"));
    named.setRequestLive(true);
    named.open();
    ASSERT_TRUE(named.isLive());
    named.last();
    test::editAndPost(named, u"Zip", QStringLiteral("02134"));
    EXPECT_EQ(named.fieldValue(u"Zip").toString(), "02134");
    EXPECT_EQ(named.recNo(), 4);
}

TEST_P(DataSetTest, ALiveResultThatLosesARowAfterAPostStandsOnTheNextRow)
{
    addClients();
    auto live = activeClients();
    QueryDataSet& active = *live;
    QStringList log;
    active.setHook(Hook::AfterPost, [&](DataSet& set) { log.append(QStringLiteral("AfterPost ") + set.fieldValue(u"Last_Name").toString()); });
    active.setHook(Hook::AfterScroll, [&](DataSet& set) { log.append(QStringLiteral("AfterScroll ") + set.fieldValue(u"Last_Name").toString()); });
    active.open();
    active.setRecNo(2);
    test::editAndPost(active, u"Last_Name", QStringLiteral("Coleman"));
    EXPECT_EQ(active.fieldValue(u"Shout").toString(), "CY");
    EXPECT_EQ(lastName(db(), 3), "Coleman");

    log.clear();
    test::editAndPost(active, u"Status", QStringLiteral("I"));
    EXPECT_EQ(log, QStringList({"AfterPost Coleman", "AfterScroll Drew"}));
    EXPECT_EQ(active.recordCount(), 2);
    EXPECT_EQ(active.recNo(), 2);
    EXPECT_EQ(active.fieldValue(u"Last_Name").toString(), "Drew");

    // The last row leaving puts the set on the new last row.
    test::editAndPost(active, u"Status", QStringLiteral("S"));
    EXPECT_EQ(active.recordCount(), 1);
    EXPECT_EQ(active.fieldValue(u"Last_Name").toString(), "Ames");

    // A new row that does not match is written but not shown.
    active.append();
    active.setFieldValue(u"Person_ID", 9);
    active.setFieldValue(u"Last_Name", QStringLiteral("Zeal"));
    active.setFieldValue(u"Status", QStringLiteral("W"));
    active.post();
    EXPECT_EQ(active.recordCount(), 1);
    EXPECT_EQ(lastName(db(), 9), "Zeal");
    active.append();
    active.setFieldValue(u"Person_ID", 10);
    active.setFieldValue(u"Last_Name", QStringLiteral("Able"));
    active.setFieldValue(u"Status", QStringLiteral("A"));
    active.post();
    EXPECT_EQ(active.recordCount(), 2);
    EXPECT_EQ(active.fieldValue(u"Last_Name").toString(), "Able");
}

TEST_P(DataSetTest, ResultsThatCannotBeEditedAreReadOnly)
{
    addClients();
    QueryDataSet grouped(db(), QStringLiteral("select Status, count(*) as N from Clients group by Status order by Status"));
    grouped.setRequestLive(true);
    grouped.open();
    EXPECT_FALSE(grouped.isLive());
    EXPECT_FALSE(grouped.canModify());
    EXPECT_EQ(grouped.recordCount(), 2);
    EXPECT_THROW(grouped.edit(), DbError);

    QueryDataSet joined(db(), QStringLiteral("select c.Last_Name, d.Route_ID from Clients c join Deliveri d on "
                                             "d.Person_ID = c.Person_ID"));
    joined.setRequestLive(true);
    joined.open();
    EXPECT_FALSE(joined.isLive());

    QueryDataSet plain(db(), QStringLiteral("select * from Clients"));
    plain.open();
    EXPECT_FALSE(plain.isLive());
    EXPECT_THROW(plain.edit(), DbError);
    const DataSet::Bookmark mark = (plain.last(), plain.bookmark());
    plain.first();
    plain.gotoBookmark(mark);
    EXPECT_EQ(plain.recNo(), 4);

    TableDataSet readOnly(db(), QStringLiteral("Clients"));
    readOnly.setReadOnly(true);
    readOnly.open();
    EXPECT_THROW(readOnly.edit(), DbError);
    EXPECT_THROW(readOnly.append(), DbError);
}

TEST_P(DataSetTest, AScratchSessionWorksBesideARunningTransaction)
{
    addClients();
    auto scratch = openScratchSession(db());
    TransactionGuard transaction(db());
    db().execute(QStringLiteral("Update Clients set Last_Name = 'Pending' where Person_ID = 1"));

    // The scratch session reads what is committed and keeps its own memory tables.
    scratch->execute(QStringLiteral("Select Person_ID, Last_Name into Memory Scratch from Clients"));
    TableDataSet copy(*scratch, QStringLiteral("Scratch"));
    copy.open();
    EXPECT_EQ(copy.recordCount(), 4);
    ASSERT_TRUE(copy.locate(QStringLiteral("Person_ID"), 1));
    EXPECT_EQ(copy.fieldValue(u"Last_Name").toString(), "Ames");
    test::editAndPost(copy, u"Last_Name", QStringLiteral("Scribbled"));
    EXPECT_FALSE(db().memoryTable(u"Scratch"));

    transaction.commit();
    EXPECT_EQ(lastName(*scratch, 1), "Pending");
    EXPECT_EQ(scratch->execute(QStringLiteral("select Last_Name from Memory Scratch where Person_ID = 1")).value(0, 0).toString(),
              "Scribbled");
}

TEST_P(DataSetTest, EditsInsideATransactionRollBackWithIt)
{
    addClients();
    TableDataSet clients(db(), QStringLiteral("Clients"));
    clients.open();
    {
        TransactionGuard transaction(db());
        test::editAndPost(clients, u"Last_Name", QStringLiteral("Undone"));
        clients.flushBuffers();
    }
    clients.refresh();
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Ames");
    // The lock went with the post.
    auto other = otherSession();
    TableDataSet elsewhere(*other, QStringLiteral("Clients"));
    elsewhere.open();
    elsewhere.edit();
    elsewhere.cancel();
}

INSTANTIATE_TEST_SUITE_P(Stores, DataSetTest, ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
