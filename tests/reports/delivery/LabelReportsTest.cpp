// The label reports over the saved runs of the small agency, on both
// stores: which deliveries get a label under each limit, how many copies,
// in which order; the dialog that chooses them, and the Client ID card's
// text.

#include "ReportAgency.h"

#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/data/TDataModule2.h"
#include "labels/ClientIdCard.h"
#include "labels/LabelStockSettings.h"
#include "labels/MemTableLabels.h"
#include "labels/TFormLabelLimit.h"
#include "model/LabelStock.h"
#include "settings/SettingsFile.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

class LabelReports : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        store = std::make_unique<TempDataDir>(GetParam());
        makeReportAgency(db());
    }

    Database& db() { return store->db(); }

    // The Client_ID of each label of the report, in print order, after the
    // dialog answered as `answer` says (unset: cancelled).
    QStringList labels(DeliveryReportChoices c, std::function<bool(TFormLabelLimit&)> answer = {})
    {
        questions.labelLimit = std::move(answer);
        TDataModule2 module(db(), store->clock());
        std::optional<ReportData> built = module.build(c, questions, ui, nullptr);
        if (!built) throw std::runtime_error("the labels were cancelled");
        data = std::move(built);
        QStringList ids;
        DataPipe& p = data->mainData();
        for (qsizetype r = 0; r < p.rowCount(); ++r) {
            p.seek(r);
            ids << p.value(QStringView(u"Client_ID")).toString();
        }
        return ids;
    }
    QStringList labels(int limit, qint64 diets = 0, bool all = false, int sort = 0)
    {
        return labels(choicesFor(db(), int(DeliveryReport::DailyLabels), wednesday, wednesday),
                      [=](TFormLabelLimit& form) {
                          form.setLimitIndex(limit);
                          form.diets().setMask(diets);
                          if (all) form.setMatch(TFormLabelLimit::Match::All);
                          form.setSortOrder(sort);
                          return true;
                      });
    }

    std::unique_ptr<TempDataDir> store;
    ScriptedUserInterface ui;
    GivenQuestions questions;
    std::optional<ReportData> data;
};

const QStringList wednesdayByRoute{"ORG1", "101", "102.0", "102.1", "104", "106", "105"};

} // namespace

TEST_P(LabelReports, EachLimitChoosesItsDeliveries)
{
    // Wednesday: 102.0 DIAB and special meal 1; 102.1 custom items; 104
    // DIAB / LS and special meal 2; 105 REN; the others without a diet.
    EXPECT_EQ(labels(0), wednesdayByRoute);
    EXPECT_EQ(labels(1), QStringList({"102.0", "104"}));
    EXPECT_EQ(labels(2), QStringList({"102.0", "104", "105"}));
    // Selected diets: any shared diet, or exactly the diets checked.
    EXPECT_EQ(labels(3, 0b011), QStringList({"102.0", "104"}));
    EXPECT_EQ(labels(3, 0b011, true), QStringList({"104"}));
    EXPECT_EQ(labels(3, 0b001, true), QStringList({"102.0"}));
    // Nothing checked is "Any Special Meal".
    EXPECT_EQ(labels(3, 0), labels(1));
    EXPECT_EQ(labels(4), QStringList({"102.1"}));
    EXPECT_EQ(labels(5), QStringList({"102.0"}));
    EXPECT_EQ(labels(6), QStringList({"ORG1", "101", "102.1", "104", "106", "105"}));
    EXPECT_EQ(labels(7), QStringList({"104", "105"}));
    EXPECT_EQ(labels(8), QStringList({"104"}));
    EXPECT_EQ(labels(10), QStringList({"102.0", "105"}));
    EXPECT_TRUE(labels(11).isEmpty());
    EXPECT_EQ(labels(12), wednesdayByRoute);
    EXPECT_EQ(labels(13), QStringList({"102.0", "104", "105"}));
    // A diet mask left checked under another limit does not count.
    EXPECT_EQ(labels(2, 0b100, true), QStringList({"102.0", "104", "105"}));

    // The sort orders of one copy each.
    EXPECT_EQ(labels(0, 0, false, 1), QStringList({"101", "102.0", "102.1", "104", "105", "106", "ORG1"}));
    EXPECT_EQ(labels(0, 0, false, 2), QStringList({"101", "102.0", "102.1", "104", "105", "106", "ORG1"}));
    EXPECT_EQ(labels(0, 0, false, 5).mid(4), QStringList({"102.0", "104", "105"}));

    // Cancel prints every label, in the route order.
    EXPECT_EQ(labels(choicesFor(db(), int(DeliveryReport::DailyLabels), wednesday, wednesday)),
              wednesdayByRoute);
    // The service and route limits of the report screen apply as well.
    DeliveryReportChoices c = choicesFor(db(), int(DeliveryReport::DailyLabels), wednesday, thursday);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("N2")), true);
    EXPECT_EQ(labels(c), QStringList({"104", "104", "105"}));
    EXPECT_TRUE(ui.messages().isEmpty());
}

TEST_P(LabelReports, SeveralLabelsOfADeliveryPrintTogether)
{
    // Thursday: 101 N1-1, 104 N2-1, 105 N2-2, 106 S1-1.
    db().execute(QStringLiteral("Update Deliveri set Number_Labels = 0 where Deliv_ID = 14"));
    const DeliveryReportChoices thursdayOnly =
        choicesFor(db(), int(DeliveryReport::DailyLabels), thursday, thursday);
    // No delivery needs more than one: every delivery gets one, also 106.
    EXPECT_EQ(labels(thursdayOnly), QStringList({"101", "104", "105", "106"}));
    EXPECT_FALSE(db().memoryTable(MemTableLabels::tableName()));

    db().execute(QStringLiteral("Update Deliveri set Number_Labels = 3 where Deliv_ID = 12"));
    EXPECT_EQ(labels(thursdayOnly), QStringList({"101", "104", "104", "104", "105"}));
    EXPECT_TRUE(db().memoryTable(MemTableLabels::tableName()));
    // Every copy brings its delivery's items and client.
    DataPipe& main = data->mainData();
    DataPipe& items = *data->pipe(QStringLiteral("DBPipelineQueryLabelitems"));
    DataPipe& clients = *data->pipe(QStringLiteral("DBPipelineClients"));
    for (qsizetype r = 1; r <= 3; ++r) {
        main.seek(r);
        ASSERT_EQ(items.rowCount(), 1);
        items.seek(0);
        EXPECT_EQ(items.value(QStringView(u"Meal_Item")).toString(), "Frozen Dinner");
        EXPECT_EQ(clients.value(QStringView(u"Address1")).toString(), "7 Hill Road");
        EXPECT_EQ(main.value(QStringView(u"Deliv_Dt")).toDate(), thursday);
    }

    // By name, the copies stay together; the table is emptied for each run.
    const auto byName = [](TFormLabelLimit& form) {
        form.setSortOrder(2);
        return true;
    };
    EXPECT_EQ(labels(thursdayOnly, byName), QStringList({"101", "104", "104", "104", "105"}));
    // Diet / Route / Stop has no index on the table: said, and by route.
    ui.clear();
    EXPECT_EQ(labels(thursdayOnly,
                     [](TFormLabelLimit& form) {
                         form.setSortOrder(5);
                         return true;
                     }),
              QStringList({"101", "104", "104", "104", "105"}));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information),
              QStringList({"You have chosen a sort order that is not valid\n"
                           "when printing more than one copy of each label.\n"
                           "The sort will set to Route/Stop instead."}));
    // Match Any filters the copies as well.
    EXPECT_EQ(labels(thursdayOnly,
                     [](TFormLabelLimit& form) {
                         form.setLimitIndex(3);
                         form.diets().setMask(0b110);
                         return true;
                     }),
              QStringList({"104", "104", "104", "105"}));

    // On separate dates the copy count comes from "From" and "To": dates
    // without a delivery there mean one label each, whatever the counts.
    DeliveryReportChoices separate = thursdayOnly;
    separate.page = DatePage::NonContiguous;
    separate.dates = {wednesday, thursday, QDate(), QDate()};
    separate.from = separate.to = QDate(2024, 3, 10);
    EXPECT_EQ(labels(separate).size(), 7 + 4);
    separate.from = wednesday;
    separate.to = thursday;
    EXPECT_EQ(labels(separate).size(), 7 + 3 + 2);
}

TEST_P(LabelReports, AddressLabelsFindTheAddressOfTheDay)
{
    labels(choicesFor(db(), int(DeliveryReport::DeliveryLabelsWithAddresses), wednesday, thursday));
    DataPipe& main = data->mainData();
    DataPipe& override = *data->pipe(QStringLiteral("DBPipeline1"));
    DataPipe& address = *data->pipe(QStringLiteral("DBPipelineAddressOverRides"));
    QStringList found;
    for (qsizetype r = 0; r < main.rowCount(); ++r) {
        main.seek(r);
        if (override.rowCount() == 0) continue;
        override.seek(0);
        address.seek(0);
        found << main.value(QStringView(u"Client_ID")).toString() + u' ' +
                     main.value(QStringView(u"Deliv_Dt")).toDate().toString(Qt::ISODate) + u' ' +
                     address.value(QStringView(u"Address1")).toString();
    }
    EXPECT_EQ(found, QStringList({"105 2024-03-06 48 Maple Avenue"}));
    // The other label reports do not read the alternate addresses.
    labels(choicesFor(db(), int(DeliveryReport::LabelsWithPreferences), wednesday, wednesday));
    EXPECT_EQ(data->pipe(QStringLiteral("DBPipeline1")), nullptr);
    DataPipe& preferences = *data->pipe(QStringLiteral("DBPipelineClientPreferences"));
    QStringList liked;
    for (qsizetype r = 0; r < data->mainData().rowCount(); ++r) {
        data->mainData().seek(r);
        if (preferences.rowCount() > 0) {
            preferences.seek(0);
            const QString text = preferences.value(QStringView(u"Preferences")).toString();
            if (!text.isEmpty())
                liked << data->mainData().value(QStringView(u"Client_ID")).toString() + u' ' + text;
        }
    }
    EXPECT_EQ(liked, QStringList({"101 No fish"}));
}

INSTANTIATE_TEST_SUITE_P(Stores, LabelReports, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

TEST(LabelLimitDialog, RemembersItsListsAndServesTheDietsOnlyForSelectedDiets)
{
    TempDataDir data;
    makeReportAgency(data.db());
    QTemporaryDir home;
    SettingsFile settings(home.path());
    {
        TFormLabelLimit form(data.db(), &settings);
        form.FormShow();
        EXPECT_EQ(form.limitIndex(), 0);
        EXPECT_EQ(form.sortOrder(), 0);
        EXPECT_EQ(form.match(), TFormLabelLimit::Match::None);
        EXPECT_FALSE(form.dietsEnabled());
        EXPECT_EQ(form.diets().entries, QStringList({"Diabetic - DIAB", "Low Sodium - LS", "Renal - REN"}));
        form.diets().setChecked(2, true);
        // Not the selected diets: no mask is stored.
        form.setLimitIndex(2);
        EXPECT_EQ(form.selection().nLabelDiet, 0);
        EXPECT_EQ(form.selection().cLabelLimit, "D");
        form.setLimitIndex(3);
        EXPECT_TRUE(form.dietsEnabled());
        EXPECT_EQ(form.match(), TFormLabelLimit::Match::Any);
        EXPECT_EQ(form.selection().nLabelDiet, 0b100);
        EXPECT_FALSE(form.selection().lFilterAll);
        EXPECT_TRUE(form.selection().filtersAnyDiet());
        form.setMatch(TFormLabelLimit::Match::All);
        EXPECT_TRUE(form.selection().lFilterAll);
        form.setSortOrder(4);
        // Cancel: no rule, no diets.
        const LabelSelection cancelled = form.cancelled();
        EXPECT_TRUE(cancelled.effectiveRule().isEmpty());
        EXPECT_EQ(cancelled.nLabelDiet, 0);
        form.setLimitIndex(9);
        EXPECT_EQ(form.match(), TFormLabelLimit::Match::None);
    }
    EXPECT_EQ(settings.readString(TFormLabelLimit::section(), QStringLiteral("LabelLimit")), "9");
    EXPECT_EQ(settings.readString(TFormLabelLimit::section(), QStringLiteral("LabelSortOrder")), "4");
    TFormLabelLimit again(data.db(), &settings);
    again.FormShow();
    EXPECT_EQ(again.limitIndex(), 9);
    EXPECT_EQ(again.sortOrder(), 4);
    // Out-of-range settings fall back to the first entries.
    settings.writeString(TFormLabelLimit::section(), QStringLiteral("LabelLimit"), QStringLiteral("99"));
    again.FormShow();
    EXPECT_EQ(again.limitIndex(), 0);

    EXPECT_EQ(LabelRules::limitEntries().size(), 14);
    EXPECT_EQ(LabelRules::ruleOf(13), "9");
    EXPECT_EQ(LabelRules::indexOfRule(QStringLiteral("S")), 3);
    EXPECT_EQ(LabelRules::clauseOf(QStringLiteral("S"), false), QString());
    EXPECT_EQ(LabelRules::clauseOf(QStringLiteral("S"), true), "and (deliveri.diet_restr = :nLabelDiet) ");
    EXPECT_EQ(LabelRules::statementOrder(2), " order by Last_Name, First_Name nocase ");
}

TEST(LabelStockChoice, KeptInTheUsersSettingsByName)
{
    QTemporaryDir home;
    SettingsFile settings(home.path());
    EXPECT_EQ(LabelStockSettings::read(&settings, LabelStockSettings::labelsKey()), QString());
    EXPECT_EQ(LabelStockSettings::entries().size(), int(LabelStock::catalogue().size()) + 1);
    const int a4 = LabelStockSettings::indexOf(QStringLiteral("avery l7163"));
    EXPECT_EQ(LabelStockSettings::stockAt(a4), "Avery L7163");
    LabelStockSettings::write(&settings, LabelStockSettings::labelsKey(), QStringLiteral("avery l7163"));
    EXPECT_EQ(settings.readString(QStringLiteral("LabelStock"), QStringLiteral("Labels")), "Avery L7163");
    EXPECT_EQ(LabelStockSettings::read(&settings, LabelStockSettings::labelsKey()), "Avery L7163");
    // A stock the program no longer knows prints on the template's own.
    settings.writeString(QStringLiteral("LabelStock"), QStringLiteral("ClientIDCard"),
                         QStringLiteral("Avery 1"));
    EXPECT_EQ(LabelStockSettings::read(&settings, LabelStockSettings::cardKey()), QString());
    // At least three sheets of each paper, and single labels.
    int letter = 0, a4Sheets = 0, single = 0;
    for (const LabelStock& stock : LabelStock::catalogue()) {
        if (stock.singleLabel())
            ++single;
        else if (qRound(stock.page.width()) == 612)
            ++letter;
        else if (qRound(stock.page.width()) == 595)
            ++a4Sheets;
    }
    EXPECT_GE(letter, 3);
    EXPECT_GE(a4Sheets, 3);
    EXPECT_GE(single, 1);

    EXPECT_EQ(ClientIdCard::nameAndId(QStringLiteral("Harold"), QString(), QStringLiteral("Baxter"),
                                      QStringLiteral("102.0")),
              "Harold Baxter,    Client ID: 102.0");
    EXPECT_EQ(ClientIdCard::nameAndId(QStringLiteral("Margaret"), QStringLiteral("A"),
                                      QStringLiteral("Abbott"), QStringLiteral("101")),
              "Margaret A Abbott,    Client ID: 101");
}
