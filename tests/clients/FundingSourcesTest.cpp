// "Funding Sources Maintenance" on both stores: a changed code carried to
// every table that keeps it in one transaction, its refusals, the numbering
// of a new source, its rates and the guards of a delete.

#include "funding/TFormEditFundingSources.h"

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "dataset/QueryDataSet.h"
#include "dataset/RecordLocks.h"
#include "records/RecordServices.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class FundingSources : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        services = std::make_unique<RecordServices>(db(), ui);
        source(1, "MOW", "Meals Fund");
        source(2, "T3", "Title III");
        insertRow(db(), QStringLiteral("FundUses"),
                  {{QStringLiteral("Person_ID"), 5},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Fund_CD"), QStringLiteral("MOW")}});
        insertRow(db(), QStringLiteral("Deliveri"),
                  {{QStringLiteral("Person_ID"), 5},
                   {QStringLiteral("Deliv_ID"), 1},
                   {QStringLiteral("Funding_Desc"), QStringLiteral("MOW")}});
        insertRow(
            db(), QStringLiteral("Events"),
            {{QStringLiteral("Person_ID"), 5}, {QStringLiteral("Funding_Desc"), QStringLiteral("MOW")}});
        for (int person : {0, 5})
            insertRow(db(), QStringLiteral("Pricing"),
                      {{QStringLiteral("Person_ID"), person},
                       {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
                       {QStringLiteral("Method"), QStringLiteral("F")},
                       {QStringLiteral("Unit"), QStringLiteral("L")},
                       {QStringLiteral("Amount"), 4.0}});
    }
    void source(int id, const char* code, const char* name)
    {
        insertRow(db(), QStringLiteral("Fundsrcs"),
                  {{QStringLiteral("Fund_ID"), id},
                   {QStringLiteral("Fund_CD"), QString::fromLatin1(code)},
                   {QStringLiteral("Fund_Srce"), QString::fromLatin1(name)},
                   {QStringLiteral("Billed_Party"), QStringLiteral("3")}});
    }
    Database& db() { return data->db(); }
    // How many rows of each table keep the code: FundUses, Deliveri, Pricing, Events, Fundsrcs.
    QList<qint64> uses(const char* code)
    {
        QList<qint64> n;
        const Params p = {{QStringLiteral("C"), QString::fromLatin1(code)}};
        for (const char* sql : {"select count(*) from FundUses where Fund_CD = :C",
                                "select count(*) from Deliveri where Funding_Desc = :C",
                                "select count(*) from Pricing where Fund_CD = :C",
                                "select count(*) from Events where Funding_Desc = :C",
                                "select count(*) from Fundsrcs where Fund_CD = :C"})
            n.append(db().execute(QString::fromLatin1(sql), p).value(0, 0).toLongLong());
        return n;
    }
    bool changeCode(TFormEditFundingSources& form, const char* from, const char* to)
    {
        TFormEditBase& editor = form.editor();
        EXPECT_TRUE(editor.dataSet().locate(QStringLiteral("FUND_CD"), QString::fromLatin1(from)));
        EXPECT_TRUE(editor.setValue(QStringLiteral("FUND_CD"), QString::fromLatin1(to)));
        const bool posted = editor.run(TFormEditBase::Command::Post);
        if (!posted) editor.run(TFormEditBase::Command::Cancel);
        return posted;
    }

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
    std::unique_ptr<RecordServices> services;
};

TEST_P(FundingSources, ACodeChangeReachesEveryTableInOneTransaction)
{
    TFormEditFundingSources form(*services, QStringLiteral("pat"));
    ASSERT_TRUE(form.open());
    // A code another source has is refused; No to the question keeps the old code.
    EXPECT_FALSE(changeCode(form, "MOW", "T3"));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{TFormEditFundingSources::duplicateText()});
    EXPECT_FALSE(changeCode(form, "MOW", "MW2"));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Question),
              QStringList{TFormEditFundingSources::cascadeQuestion()});
    EXPECT_EQ(uses("MOW"), (QList<qint64>{1, 1, 2, 1, 1}));

    // Another workstation holds an event of the code: the last update fails
    // and nothing has changed, the source's own row included.
    std::unique_ptr<Database> other = data->openAnother();
    const qint64 row = other->execute(QStringLiteral("Select KB_ROWID from Events")).value(0, 0).toLongLong();
    int owner = 0;
    other->recordLocks().lock(&owner, QStringLiteral("Events"), row);
    db().recordLocks().setRetries(1, 10);
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(changeCode(form, "MOW", "MW2"));
    EXPECT_FALSE(db().inTransaction());
    EXPECT_EQ(uses("MOW"), (QList<qint64>{1, 1, 2, 1, 1}));
    EXPECT_EQ(uses("MW2"), (QList<qint64>{0, 0, 0, 0, 0}));
    other->recordLocks().unlock(&owner, QStringLiteral("Events"), row);

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(changeCode(form, "MOW", "MW2"));
    EXPECT_FALSE(db().inTransaction());
    EXPECT_EQ(uses("MW2"), (QList<qint64>{1, 1, 2, 1, 1}));
    EXPECT_EQ(uses("MOW"), (QList<qint64>{0, 0, 0, 0, 0}));
    // A code no client uses changes alone, without a question.
    ui.clear();
    EXPECT_TRUE(changeCode(form, "T3", "T4"));
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Question).isEmpty());
    EXPECT_TRUE(form.close());
}

TEST_P(FundingSources, NewSourcesRatesAndTheChecksOfAPost)
{
    TFormEditFundingSources form(*services, QStringLiteral("pat"));
    ASSERT_TRUE(form.open());
    TFormEditBase& editor = form.editor();
    ASSERT_TRUE(editor.run(TFormEditBase::Command::Insert));
    EXPECT_EQ(editor.value(QStringLiteral("FUND_ID")).toInt(), 3);
    EXPECT_EQ(editor.value(QStringLiteral("BILLED_PARTY")).toString(), "N");
    EXPECT_FALSE(form.methodVisible());
    ASSERT_TRUE(editor.setValue(QStringLiteral("FUND_SRCE"), QStringLiteral("Private Pay")));
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Post));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).last(), TFormEditFundingSources::noCodeText());
    ASSERT_TRUE(editor.setValue(QStringLiteral("FUND_CD"), QStringLiteral("PP")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("BILLED_PARTY"), QStringLiteral("P")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_METHOD"), QStringLiteral("T")));
    EXPECT_TRUE(form.timeRatesVisible());
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Post));
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).last().contains(QStringLiteral("Period blank")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_PERIOD"), QStringLiteral("D")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_RATE"), 6.5));
    ASSERT_TRUE(editor.run(TFormEditBase::Command::Post));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_METHOD"), QStringLiteral("I")));
    ASSERT_TRUE(editor.run(TFormEditBase::Command::Post));
    EXPECT_TRUE(form.itemRatesVisible());
    EXPECT_EQ(form.ratesButtonText(), "View Rates");
    form.toggleRates();
    EXPECT_EQ(form.ratesButtonText(), "Hide Rates");

    // The source's item rates.
    EXPECT_EQ(form.unitChoices().last().unit, "SM");
    form.ActionAddItem();
    EXPECT_EQ(form.rates().fieldValue(u"Fund_CD").toString(), "PP");
    EXPECT_EQ(form.rates().fieldValue(u"Created_By").toString(), "pat");
    EXPECT_FALSE(form.postRate());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).last(), TFormEditFundingSources::zeroRateText());
    ASSERT_TRUE(form.setRateValue(QStringLiteral("Amount"), 3.25));
    EXPECT_FALSE(form.postRate());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).last(), TFormEditFundingSources::noItemText());
    ASSERT_TRUE(form.setRateValue(QStringLiteral("Unit"), QStringLiteral("MF")));
    ASSERT_TRUE(form.postRate());
    EXPECT_EQ(
        db().execute(QStringLiteral("select count(*) from Pricing where Fund_CD = 'PP' and Person_ID = 0 and "
                                    "Method = 'F'"))
            .value(0, 0)
            .toInt(),
        1);
}

TEST_P(FundingSources, CodesShowTheirCaptionsAndTheBilledPartyHidesTheMethodAndRates)
{
    TFormEditFundingSources form(*services, QStringLiteral("pat"));
    ASSERT_TRUE(form.open());
    TFormEditBase& editor = form.editor();
    const auto captions = [&](const QString& field) {
        QStringList list;
        for (const Choice& c : editor.choices(field))
            list.append(c.value.toString() + QLatin1Char('=') + c.text);
        return list;
    };
    EXPECT_EQ(captions(QStringLiteral("BILLED_PARTY")),
              (QStringList{"3=Third Party", "P=Client (Private Pay)", "N=No Billing"}));
    EXPECT_EQ(captions(QStringLiteral("REIMBURSEMENT_METHOD")),
              (QStringList{"T=Time Period", "I=Meals or Meal Items"}));
    EXPECT_EQ(captions(QStringLiteral("REIMBURSEMENT_PERIOD")), QStringList{"D=Day"});
    // The browse grid shows the captions; the rows keep the codes.
    const TFormEditBase::Grid& grid = editor.grid();
    const qsizetype billed = grid.fields.indexOf(QStringLiteral("BILLED_PARTY"));
    ASSERT_GE(billed, 0);
    ASSERT_EQ(grid.rows.size(), 2);
    EXPECT_EQ(grid.rows[0].value(billed).toString(), "Third Party");

    ASSERT_TRUE(editor.setValue(QStringLiteral("BILLED_PARTY"), QStringLiteral("N")));
    EXPECT_FALSE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_METHOD")));
    EXPECT_FALSE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_RATE")));
    EXPECT_TRUE(editor.isFieldVisible(QStringLiteral("CONTACT")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("BILLED_PARTY"), QStringLiteral("3")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_METHOD"), QStringLiteral("I")));
    EXPECT_TRUE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_METHOD")));
    EXPECT_FALSE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_PERIOD")));
    ASSERT_TRUE(editor.setValue(QStringLiteral("REIMBURSEMENT_METHOD"), QStringLiteral("T")));
    EXPECT_TRUE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_RATE")));
    EXPECT_TRUE(editor.isFieldVisible(QStringLiteral("REIMBURSEMENT_PERIOD")));
    ASSERT_TRUE(editor.run(TFormEditBase::Command::Cancel));
    EXPECT_EQ(db().execute(QStringLiteral("select Billed_Party from Fundsrcs where Fund_CD = 'MOW'"))
                  .value(0, 0)
                  .toString(),
              "3");
}

TEST_P(FundingSources, DeletingIsGuardedInOrderAndTakesTheRates)
{
    db().execute(
        QStringLiteral("Insert into Services (Service_ID, Service_Desc, Default_Funding_Source) values (1, "
                       "'Meals', 1)"));
    TFormEditFundingSources form(*services, QStringLiteral("pat"));
    ASSERT_TRUE(form.open());
    TFormEditBase& editor = form.editor();
    ASSERT_TRUE(editor.dataSet().locate(QStringLiteral("FUND_CD"), QStringLiteral("MOW")));
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Delete));
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Warning)
                    .last()
                    .startsWith(QStringLiteral("The Funding you are deleting is the default")));
    db().execute(QStringLiteral("Update Services set Default_Funding_Source = 2"));
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Delete));
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).last().contains(QStringLiteral("Clients assigned")));
    db().execute(QStringLiteral("Delete from FundUses"));
    // Deliveries, then events ask; No to either keeps the source.
    ui.clear();
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Delete));
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(editor.run(TFormEditBase::Command::Delete));
    const QStringList asked = ui.texts(ScriptedUserInterface::Kind::Question);
    ASSERT_EQ(asked.size(), 3);
    EXPECT_TRUE(asked.at(0).contains(QStringLiteral("deliveries which use it")));
    EXPECT_TRUE(asked.at(2).contains(QStringLiteral("events which use it")));
    ui.answerNext(Answer::Yes);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(editor.run(TFormEditBase::Command::Delete));
    EXPECT_EQ(uses("MOW"), (QList<qint64>{0, 1, 0, 1, 0})); // the clients' rates went too
    EXPECT_EQ(uses("T3").last(), 1);
}

INSTANTIATE_TEST_SUITE_P(Stores, FundingSources, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
