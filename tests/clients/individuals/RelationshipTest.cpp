// Individuals and their relationships with clients: the relationship form's
// rules, the individual's own form, and the guard that keeps an individual
// whom clients still point at.

#include "ClientRulesFixture.h"

#include "MessageError.h"

#include "individuals/IndividualActions.h"
#include "individuals/TFormIndividual.h"
#include "individuals/TFormRelatedClients.h"
#include "individuals/TFormRelationship.h"

namespace kb::test {

namespace {

using Kind = ScriptedUserInterface::Kind;

class Relationships : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        addClient(1, {{QStringLiteral("Phone"), QStringLiteral("555-123-4567")},
                      {QStringLiteral("Phone_Desc"), QStringLiteral("H")},
                      {QStringLiteral("OPhone"), QStringLiteral("555-765-4321")},
                      {QStringLiteral("ODesc"), QStringLiteral("C")},
                      {QStringLiteral("Email"), QStringLiteral("first1@example.org")},
                      {QStringLiteral("City"), QStringLiteral("Millbrook")}});
        addClient(2);
        addClient(3);
        insertRow(db(), QStringLiteral("Individuals"),
                  {{QStringLiteral("Indiv_ID"), 50},
                   {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Smith")},
                   {QStringLiteral("Organization"), QStringLiteral("Acme Care")},
                   {QStringLiteral("Address1"), QStringLiteral("1 Old Road")}});
        insertRow(db(), QStringLiteral("Individuals"),
                  {{QStringLiteral("Indiv_ID"), 51},
                   {QStringLiteral("Organization"), QStringLiteral("County Office")}});
        setConfig(QStringLiteral("RELATIONSHIP_LIST"), QStringLiteral("Daughter\r\nDoctor\r\n"));
    }
    int count(const QString& sql) { return db().execute(sql).value(0, 0).toInt(); }
    std::unique_ptr<TFormRelationship> form(qint64 personId)
    {
        return std::make_unique<TFormRelationship>(ws->services, ui(), data->clock(),
                                                   QStringLiteral("Pat Tester"), personId);
    }
    // A relationship saved through the form.
    qint64 relate(qint64 personId, qint64 indivId, const QString& name)
    {
        auto f = form(personId);
        f->EditRelationships(TFormRelationship::Mode::Add);
        f->setValue(QStringLiteral("Relationship"), name);
        f->setIndividual(indivId);
        EXPECT_TRUE(f->Ok());
        return f->relationships().fieldValue(u"RecordID").toLongLong();
    }
};

} // namespace

TEST_P(Relationships, ARelationshipNeedsItsNameAndAnIndividualAndStartsWithItsDefaults)
{
    auto f = form(1);
    EXPECT_EQ(f->relationshipChoices(),
              (QStringList{QStringLiteral("Daughter"), QStringLiteral("Doctor"), QStringLiteral("Bill-To")}));
    EXPECT_EQ(f->awareLabel(), QStringLiteral("Relation is aware of client's medical status"));
    ASSERT_EQ(f->individualChoices().size(), 2u);
    EXPECT_EQ(f->individualChoices()[0].text, QStringLiteral("County Office   [51]"));
    EXPECT_EQ(f->individualChoices()[1].text, QStringLiteral("Smith, Ann (Acme Care)   [50]"));
    EXPECT_EQ(individualIdOfChoice(f->individualChoices()[1].text), 50);

    // No individual: refused, the screen stays; then cancelled, nothing is saved.
    f->EditRelationships(TFormRelationship::Mode::Add);
    f->setValue(QStringLiteral("Relationship"), QStringLiteral("Bill-To"));
    EXPECT_FALSE(f->Ok());
    EXPECT_EQ(ui().texts(Kind::Warning), QStringList{TFormRelationship::requiredText()});
    EXPECT_EQ(f->relationships().state(), DataSet::State::Insert);
    // An individual without the relationship's name is refused the same way.
    f->setValue(QStringLiteral("Relationship"), QString());
    f->setIndividual(50);
    EXPECT_FALSE(f->Ok());
    f->Cancel();
    EXPECT_EQ(count(QStringLiteral("select count(*) from Relationships")), 0);

    const qint64 id = relate(1, 50, QStringLiteral("Bill-To"));
    const ResultSet row = db().execute(
        QStringLiteral(
            "select Person_ID, Indiv_ID, Relationship, Referrer, HIV_Aware, Emergency_Contact, User, "
            "Create_Date, Last_Updated from Relationships where RecordID = :R"),
        {{QStringLiteral("R"), id}});
    ASSERT_EQ(row.rowCount(), 1);
    EXPECT_EQ(row.value(0, 0).toInt(), 1);
    EXPECT_EQ(row.value(0, 1).toInt(), 50);
    EXPECT_EQ(row.value(0, 2).toString(), QStringLiteral("Bill-To"));
    EXPECT_FALSE(row.value(0, 3).toBool());
    EXPECT_FALSE(row.value(0, 4).toBool());
    EXPECT_FALSE(row.value(0, 5).toBool());
    EXPECT_EQ(row.value(0, 6).toString(), QStringLiteral("Pat Tester"));
    EXPECT_EQ(row.value(0, 7).toDate(), today());
    EXPECT_EQ(row.value(0, 8).toDate(), today());

    // Editing: by RecordID, and an unknown one is a failure with its text.
    auto edit = form(1);
    edit->EditRelationships(TFormRelationship::Mode::Edit, id);
    EXPECT_EQ(edit->indivId(), 50);
    EXPECT_EQ(edit->individualValue(QStringLiteral("Last_Name")).toString(), QStringLiteral("Smith"));
    edit->setValue(QStringLiteral("Emergency_Contact"), true);
    EXPECT_TRUE(edit->Ok());
    EXPECT_EQ(count(QStringLiteral("select count(*) from Relationships where Emergency_Contact = true")), 1);
    try {
        form(1)->EditRelationships(TFormRelationship::Mode::Edit, id + 100);
        ADD_FAILURE() << "an unknown RecordID was located";
    } catch (const MessageError& error) {
        EXPECT_EQ(error.message(), QStringLiteral(" Error locating the Relationship by RecordID. "));
    }

    // A configured label for the flag.
    setConfig(QStringLiteral("AWARE_LABEL"), QStringLiteral("Knows the diagnosis"));
    EXPECT_EQ(form(1)->awareLabel(), QStringLiteral("Knows the diagnosis"));
}

TEST_P(Relationships, AnIndividualIsOneRowForEveryClientRelatedToIt)
{
    const qint64 first = relate(1, 50, QStringLiteral("Daughter"));
    relate(2, 50, QStringLiteral("Bill-To"));

    // The address changed in client 1's relationship shows in client 2's.
    auto f = form(1);
    f->EditRelationships(TFormRelationship::Mode::Edit, first);
    f->setIndividualValue(QStringLiteral("Address1"), QStringLiteral("9 New Lane"));
    ASSERT_TRUE(f->Ok());
    const ResultSet seen = db().execute(
        QStringLiteral(
            "Select Individuals.Address1 from Relationships, Individuals where Relationships.Person_ID = "
            ":Person_ID and Relationships.Indiv_ID = Individuals.Indiv_ID"),
        {{QStringLiteral("Person_ID"), 2}});
    ASSERT_EQ(seen.rowCount(), 1);
    EXPECT_EQ(seen.value(0, 0).toString(), QStringLiteral("9 New Lane"));

    // Cancel drops what was typed into both rows.
    auto cancelled = form(1);
    cancelled->EditRelationships(TFormRelationship::Mode::Edit, first);
    cancelled->setValue(QStringLiteral("Relationship"), QStringLiteral("Doctor"));
    cancelled->setIndividualValue(QStringLiteral("Address1"), QStringLiteral("Nowhere"));
    cancelled->Cancel();
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals where Address1 = 'Nowhere'")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Relationships where Relationship = 'Doctor'")), 0);

    // Deleting a relationship asks; the individual stays.
    ui().answerNext(Answer::No);
    EXPECT_FALSE(TFormRelationship::DeleteRelationship(ws->services, ui(), first));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Relationships")), 2);
    ui().answerNext(Answer::Yes);
    EXPECT_TRUE(TFormRelationship::DeleteRelationship(ws->services, ui(), first));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Relationships")), 1);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals where Indiv_ID = 50")), 1);
    EXPECT_EQ(ui().texts(Kind::Question),
              (QStringList{TFormRelationship::deleteQuestion(), TFormRelationship::deleteQuestion()}));
    ui().answerNext(Answer::Yes);
    try {
        TFormRelationship::DeleteRelationship(ws->services, ui(), first);
        ADD_FAILURE() << "a deleted relationship was located";
    } catch (const MessageError& error) {
        EXPECT_EQ(error.message(), QStringLiteral(" Error locating the current Relationship by RecordID. "));
    }
}

TEST_P(Relationships, AnIndividualWithRelatedClientsIsKeptAndTheyAreListed)
{
    relate(1, 50, QStringLiteral("Daughter"));
    relate(2, 50, QStringLiteral("Bill-To"));
    TableDataSet individuals(db(), QStringLiteral("Individuals"));
    individuals.open();

    std::vector<QStringList> shown;
    QString caption;
    qint64 movedTo = 0;
    IndividualActions actions(db(), ui(), [&](TFormRelatedClients& related) {
        caption = related.caption();
        for (int r = 0; r < related.rowCount(); ++r)
            shown.push_back(related.rowTexts(r));
        related.setClientMover([&](qint64 personId) { movedTo = personId; });
        related.ActivateRow(1);
    });

    // Cancel: nothing happens.
    ASSERT_TRUE(individuals.locate(QStringLiteral("INDIV_ID"), 50));
    ui().answerNext(Answer::Cancel);
    EXPECT_FALSE(actions.DeleteIndividual(individuals));
    EXPECT_TRUE(shown.empty());

    // OK: still there, with its two clients shown.
    ui().answerNext(Answer::Ok);
    EXPECT_FALSE(actions.DeleteIndividual(individuals));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals where Indiv_ID = 50")), 1);
    EXPECT_EQ(caption, QStringLiteral("Clients related to Ann Smith, Acme Care"));
    ASSERT_EQ(shown.size(), 2u);
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown[0], (QStringList{QStringLiteral("1.0"), QStringLiteral("Last1"), QStringLiteral("First1"),
                                     QStringLiteral("Daughter")}));
    EXPECT_EQ(shown[1], (QStringList{QStringLiteral("2.0"), QStringLiteral("Last2"), QStringLiteral("First2"),
                                     QStringLiteral("Bill-To")}));
    EXPECT_TRUE(movedTo == 1 || movedTo == 2);
    EXPECT_EQ(ui().texts(Kind::Question),
              (QStringList{IndividualActions::deleteQuestion(), IndividualActions::deleteQuestion()}));

    // An individual nobody is related to goes; "Show Related Clients" says so first.
    shown.clear();
    actions.ShowRelatedClients(51);
    EXPECT_EQ(ui().texts(Kind::Information), QStringList{IndividualActions::noRelatedText()});
    EXPECT_EQ(TFormRelatedClients(db(), 51).caption(), QStringLiteral("Clients related to County Office"));
    ASSERT_TRUE(individuals.locate(QStringLiteral("INDIV_ID"), 51));
    ui().answerNext(Answer::Ok);
    EXPECT_TRUE(actions.DeleteIndividual(individuals));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals")), 1);
    actions.ShowRelatedClients(50);
    EXPECT_EQ(shown.size(), 2u);
}

TEST_P(Relationships, AnIndividualIsAddedAndTakesTheClientsDetailsGroupByGroup)
{
    TableDataSet individuals(db(), QStringLiteral("Individuals"));
    individuals.open();
    TFormIndividual form(individuals, ui(), data->clock(), QStringLiteral("Pat Tester"),
                         QStringLiteral("USA"));
    EXPECT_EQ(form.postalForm().cityLabel, QStringLiteral("City / State / ZIP:"));
    EXPECT_TRUE(form.postalForm().zipLookUp);
    EXPECT_EQ(individualPostalForm(QStringLiteral("CAN")).postalPattern, QStringLiteral("&#& #&#"));
    EXPECT_EQ(individualPostalForm(QStringLiteral("UK")).cityLabel, QStringLiteral("Town / / Postcode:"));
    EXPECT_TRUE(individualPostalForm(QStringLiteral("OTH")).phoneMask.isEmpty());

    form.Add();
    form.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("Old"));
    clients().open();
    ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), 1));
    // Name yes, address no, phones yes.
    ui().answerNext(Answer::Yes);
    ui().answerNext(Answer::No);
    ui().answerNext(Answer::Yes);
    EXPECT_EQ(form.ImportClient(clients()), 2);
    const QStringList asked = ui().texts(Kind::Question);
    ASSERT_EQ(asked.size(), 3);
    EXPECT_EQ(asked[0],
              QStringLiteral("You are about to replace the current Individual's name (Old) with \r\n"
                             "First1 Last1!\r\nIs that what you want to do?"));
    EXPECT_EQ(asked[1], QStringLiteral("You are about to replace the current Individual's address with \r\n"
                                       "12 Elm Street\r\nMillbrook\r\nIs that what you want to do?"));
    EXPECT_EQ(asked[2],
              QStringLiteral("You are about to replace the current Individual's phone and \r\nemail "
                             "entries!\r\nIs that what you want to do?"));
    form.Ok();
    const ResultSet row =
        db().execute(QStringLiteral("select First_Name, Last_Name, Address1, Phone1_Desc, Phone1, "
                                    "Phone2_Desc, Phone2, Email, Create_Date, "
                                    "Last_Updated, User from Individuals where First_Name = 'First1'"));
    ASSERT_EQ(row.rowCount(), 1);
    EXPECT_EQ(row.value(0, 1).toString(), QStringLiteral("Last1"));
    EXPECT_TRUE(row.value(0, 2).toString().isEmpty());
    EXPECT_EQ(row.value(0, 3).toString(), QStringLiteral("Home"));
    EXPECT_EQ(row.value(0, 4).toString(), QStringLiteral("555-123-4567"));
    EXPECT_EQ(row.value(0, 5).toString(), QStringLiteral("Cell/Mobile"));
    EXPECT_EQ(row.value(0, 6).toString(), QStringLiteral("555-765-4321"));
    EXPECT_EQ(row.value(0, 7).toString(), QStringLiteral("first1@example.org"));
    EXPECT_EQ(row.value(0, 8).toDate(), today());
    EXPECT_EQ(row.value(0, 9).toDateTime(), data->clock().now());
    EXPECT_EQ(row.value(0, 10).toString(), QStringLiteral("Pat Tester"));

    EXPECT_EQ(individualPhoneWord(QStringLiteral("X")), QStringLiteral("No Phone"));
    EXPECT_EQ(individualPhoneWord(QStringLiteral("G")), QStringLiteral("Grandparents"));
    EXPECT_TRUE(individualPhoneWord(QStringLiteral("Q")).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Stores, Relationships, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace kb::test
